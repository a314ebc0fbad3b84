// The fast solver for regular grids.
#pragma once

#include <optional>

#include "fem/solver.h"

namespace quillane {

/// Solves the model's numbered equations as AssembleStiffness, CompressStiffness and SolveEquations
/// do but for the order of the three inner products, and without filling the model's row stores.
/// LoadVector must be filled and SolutionVector hold as many numbers; the solution, started from
/// zero, replaces these. Empty, SolutionVector as it was, where the mesh is no regular grid of
/// square cells or a number stops being finite: the plain procedures then give the result or the
/// error. Throws RunTimeError (out of memory).
std::optional<SolveReport> SolveOnWaves(Model& model, double tolerance);

}  // namespace quillane
