#include "optimize/optimization_step.h"

#include "fem/mesh.h"
#include "fem/stress.h"
#include "model/numbers.h"
#include "optimize/potential.h"

namespace quillane {

SolveReport StressAnalysis(Model& model, const std::function<void()>& stressesReady) {
  model.EditMode = kModeNothing;
  model.StepCount = 0;
  const SolveReport report = AnalyseStructure(model, stressesReady);
  InitPotential(model);
  return report;
}

SolveReport Optimization(Model& model, History& history, const std::function<void()>& show) {
  model.EditMode = kModeNothing;
  UpdatePotential(model);
  MarkActiveNodes(model);
  DesignVolume(model);  // of the new layout, should the analysis fail
  const SolveReport report = AnalyseStructure(model);
  if (show) show();
  history.Record(model);
  model.StepCount = ToInteger(model.StepCount + 1, "the number of optimization steps");
  return report;
}

}  // namespace quillane
