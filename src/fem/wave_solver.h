// The fast solver for regular grids.
#pragma once

#include <optional>

#include "model/model.h"

namespace quillane {

/// Solves the model's numbered equations as AssembleStiffness, CompressStiffness and SolveEquations
/// do, except for the inner products: p q and r r are summed in another order, r z as in
/// ForwardPass. Does not fill the model's row stores. Starts from zero and writes the solution into
/// SolutionVector, which must have the size of LoadVector. Returns nothing and leaves
/// SolutionVector as it is if LayOutWaves returns nothing or a number is not finite: the plain
/// procedures then give the result or the error. Throws RunTimeError (out of memory).
std::optional<SolveReport> SolveOnWaves(Model& model, double tolerance);

}  // namespace quillane
