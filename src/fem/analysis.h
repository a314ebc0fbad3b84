// The finite-element chain as a whole: one linear static analysis of the present model.
#pragma once

#include "fem/solver.h"
#include "model/model.h"

namespace quillane {

/// The solver's tolerance on the residual, and the smallest pivot of its factorization.
inline constexpr double kSolverTolerance = 1.0e-6;

/// A solve with a larger true residual is reported as not converged.
inline constexpr double kTrueResidualBound = 1.0e-3;

/// Runs the plain procedures up to the solver, for any mesh: element stiffness, numbering,
/// stiffness and loads, compression into the row store. Throws as they do.
void AssembleEquations(Model& model);

/// Solves the assembled equations; writes the displacements per equation (mm) into SolutionVector.
SolveReport SolveAssembledEquations(Model& model, double tolerance);

/// Computes the element stiffness, numbers, assembles and solves; writes the displacements per
/// equation (mm) into SolutionVector. Does not solve a system equal to the last one solved again.
/// Uses the fast form where it applies and the plain procedures elsewhere; re-creates the arrays of
/// the square matrix and of the row store only in the second case. Reports a solution whose true
/// residual is above kTrueResidualBound as not converged. Throws as the plain procedures; the cause
/// of a floating-point error is that of the model.
SolveReport SolveStructure(Model& model);

/// Runs SolveStructure, then computes displacements, stresses and volume, for the present
/// NodeActive. Throws RunTimeError and leaves the model as the failed procedure left it.
SolveReport AnalyseStructure(Model& model);

}  // namespace quillane
