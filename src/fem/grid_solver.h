// The solver at the speed of the machine, for the regular grid.
#pragma once

#include <optional>

#include "fem/solver.h"

namespace quillane {

/// Assembles and solves the model's numbered equations as AssembleStiffness, AssembleLoads,
/// CompressStiffness and SolveEquations do, with the same bits in SolutionVector and in the report,
/// and without their row store. Empty, SolutionVector as it was, where the model is no regular
/// grid, where a large grid is of so few columns that the layout would be mostly padding, or where
/// a number stops being finite: the plain procedures then give the result or the error.
std::optional<SolveReport> SolveOnGrid(Model& model, double tolerance);

}  // namespace quillane
