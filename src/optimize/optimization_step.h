// One stress analysis and one optimization step, as the window and the command line run them.
#pragma once

#include <functional>

#include "fem/analysis.h"
#include "model/model.h"

namespace quillane {

/// Computes stresses and volume of a model: AnalyseStructure or a replacement for it.
using Analysis = std::function<SolveReport(Model& model)>;

/// Runs a stress analysis: EditMode and StepCount 0, the finite-element chain on the active nodes
/// as they stand, potentials saturated. Throws RunTimeError, the model left as the failed step left
/// it.
SolveReport StressAnalysis(Model& model, const Analysis& analyse = AnalyseStructure);

/// Runs one optimization step: updates potentials and cell states from the last stresses, analyses
/// the new layout, calls `stands` with the solve's report (for map, label and history; StepCount is
/// still the number of this step), and increments StepCount. Throws RunTimeError.
SolveReport Optimization(Model& model, const std::function<void(const SolveReport&)>& stands = {},
                         const Analysis& analyse = AnalyseStructure);

/// Returns whether the step counter is at its maximum, so that the next step fails.
inline bool StepCounterIsFull(const Model& model) { return model.StepCount == kIntegerMax; }

}  // namespace quillane
