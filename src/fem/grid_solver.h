// The solver at the speed of the machine, for the regular grid.
#pragma once

#include <optional>

#include "fem/solver.h"

namespace quillane {

/// Assembles and solves the model's numbered equations as AssembleStiffness, AssembleLoads,
/// CompressStiffness and SolveEquations do, with the same bits in SolutionVector and in the report,
/// and without their row store. Empty, SolutionVector cleared, where the mesh is not a regular grid
/// or a number stops being finite: the plain procedures then give the result or the error.
std::optional<SolveReport> SolveOnGrid(Model& model, double tolerance);

}  // namespace quillane
