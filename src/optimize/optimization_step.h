// One stress analysis and one optimization step, as the window and the command line run them.
#pragma once

#include <functional>

#include "fem/analysis.h"
#include "model/model.h"

namespace quillane {

/// Gives a model its stresses and volume: AnalyseStructure, or what takes its place.
using Analysis = std::function<SolveReport(Model& model)>;

/// Runs a stress analysis: EditMode and StepCount 0, the finite-element chain on the active nodes
/// as they stand, potentials saturated. Throws RunTimeError, the model left as the failed step left
/// it.
SolveReport StressAnalysis(Model& model, const Analysis& analyse = AnalyseStructure);

/// Runs one optimization step: new potentials and cell states from the last stresses, the
/// finite-element chain on the new layout, then `stands` with the solve's report (for map, label
/// and history, with StepCount still this step's number), and StepCount plus one. Throws
/// RunTimeError.
SolveReport Optimization(Model& model, const std::function<void(const SolveReport&)>& stands = {},
                         const Analysis& analyse = AnalyseStructure);

/// Whether the step counter is at its maximum: the next step fails.
inline bool StepCounterIsFull(const Model& model) { return model.StepCount == kIntegerMax; }

}  // namespace quillane
