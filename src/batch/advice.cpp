// Likely causes of a failure, the surest first.
#include "batch/advice.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "fem/load_paths.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

bool LoadsAreLost(const Model& model) {
  try {
    return !LostLoads(model).empty();
  } catch (const RunTimeError&) {
    return false;  // a mesh of unusable nodes, which the failure itself tells of
  }
}

}  // namespace

std::string Advice(const Model& model) {
  const std::span<const Integer> cells = model.CellState.Raw();
  const std::span<const Double> loads = model.NodeLoad.Raw();
  if (model.Lambda == 0) return " Lambda must not be 0: give --lambda.";
  if (std::fabs(model.PoissonRatio) == 1) {
    return " Poisson's ratio, in the model's record of the material, must not be 1 or -1.";
  }
  if (std::all_of(loads.begin(), loads.end(), [](double force) { return force == 0; })) {
    return " The model has no load.";
  }
  if (std::none_of(cells.begin(), cells.end(), [](Integer state) { return state > 0; })) {
    return model.StepCount == 0 && model.Potential.Raw().empty()
               ? " No cell of the model holds material."
               : " No cell holds material any more: take a lower --stress-target, or "
                 "--volume-fraction.";
  }
  if (LoadsAreLost(model)) {
    return " A load has no way through the material to supports that hold it: see --check, and "
           "take a lower --stress-target, or --volume-fraction.";
  }
  return "";
}

}  // namespace quillane
