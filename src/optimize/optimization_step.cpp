#include "optimize/optimization_step.h"

#include "fem/mesh.h"
#include "fem/stress.h"
#include "model/numbers.h"
#include "optimize/potential.h"

namespace quillane {

SolveReport StressAnalysis(Model& model, const Analysis& analyse) {
  model.EditMode = kModeNothing;
  model.StepCount = 0;
  const SolveReport report = analyse(model);
  InitPotential(model);
  return report;
}

SolveReport Optimization(Model& model, const std::function<void(const SolveReport&)>& stands,
                         const Analysis& analyse) {
  model.EditMode = kModeNothing;
  UpdatePotential(model);
  MarkActiveNodes(model);
  DesignVolume(model);  // of the new layout, should the analysis fail
  const SolveReport report = analyse(model);
  if (stands) stands(report);
  model.StepCount = ToInteger(model.StepCount + 1, "the number of optimization steps");
  return report;
}

}  // namespace quillane
