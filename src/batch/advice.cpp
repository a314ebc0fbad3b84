// Likely causes of a failure, the surest first.
#include "batch/advice.h"

#include <algorithm>
#include <cmath>

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
  if (model.Lambda == 0) return " Lambda must not be 0: give --lambda.";
  if (std::fabs(model.PoissonRatio) == 1) {
    return " Poisson's ratio, in the model's record of the material, must not be 1 or -1.";
  }
  if (std::ranges::all_of(model.NodeLoad.Raw(), [](double force) { return force == 0; })) {
    return " The model has no load.";
  }
  if (std::ranges::none_of(model.CellState.Raw(), [](Integer state) { return state > 0; })) {
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
