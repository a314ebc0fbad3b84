// The finite-element chain as a whole: one linear static analysis of the present model.
#pragma once

#include "fem/solver.h"
#include "model/model.h"

namespace quillane {

/// The solver's tolerance on the residual, and the smallest pivot of its factorization.
inline constexpr double kSolverTolerance = 1.0e-6;

/// The plain procedures up to the solver, for any mesh: element stiffness, numbering, stiffness and
/// loads, compression into the row store. Throws as they do.
void AssembleEquations(Model& model);

/// Solves what AssembleEquations left: the displacements per equation (mm) in SolutionVector.
SolveReport SolveAssembledEquations(Model& model, double tolerance);

/// Computes the element stiffness, numbers, assembles and solves: the displacements per equation in
/// SolutionVector. A system equal to the last one solved is not solved again: its solution stands.
/// The fast form serves wherever it can, the plain procedures else; the arrays of the square matrix
/// and of the row store are re-created only in the second case. A solution whose true residual is
/// above kTrueResidualBound is reported as not converged. Throws as the procedures it stands for.
SolveReport SolveStructure(Model& model);

/// SolveStructure, then displacements, stresses and volume, on the present active nodes. Throws
/// RunTimeError, the model left as the failed procedure left it.
SolveReport AnalyseStructure(Model& model);

}  // namespace quillane
