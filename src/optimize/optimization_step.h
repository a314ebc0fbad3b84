// One stress analysis and one optimization step, as the window and the command line run them.
#pragma once

#include <functional>

#include "fem/analysis.h"
#include "model/model.h"
#include "optimize/history.h"

namespace quillane {

/// Runs a stress analysis: EditMode and StepCount 0, the finite-element chain on the active nodes
/// as they stand, potentials saturated. stressesReady, where given, is called as soon as the
/// stresses stand. Throws RunTimeError, the model left as the failed step left it.
SolveReport StressAnalysis(Model& model, const std::function<void()>& stressesReady = {});

/// Runs one optimization step: new potentials and cell states from the last stresses, the
/// finite-element chain on the new layout, then `show` (the map and the label, with StepCount still
/// this step's number), the history record, and StepCount plus one. Throws RunTimeError.
SolveReport Optimization(Model& model, History& history, const std::function<void()>& show = {});

/// Whether the next step, for want of a number after its own, must fail.
inline bool StepCounterIsFull(const Model& model) { return model.StepCount == kIntegerMax; }

}  // namespace quillane
