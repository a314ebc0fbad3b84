// The fast solver for regular grids.
#pragma once

#include <optional>

#include "model/model.h"

namespace quillane {

/// Solves the model's numbered equations as AssembleStiffness, CompressStiffness and SolveEquations
/// do but for the inner products: p q and r r are summed in another order, r z as ForwardPass has
/// it. The model's row stores are not filled. LoadVector must be filled and SolutionVector hold as
/// many numbers; the solution, started from zero, replaces these. Empty, SolutionVector as it was,
/// where LayOutWaves is or a number stops being finite: the plain procedures then give the result
/// or the error. Throws RunTimeError (out of memory).
std::optional<SolveReport> SolveOnWaves(Model& model, double tolerance);

}  // namespace quillane
