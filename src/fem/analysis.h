// The finite-element chain as a whole: one linear static analysis of the present model.
#pragma once

#include <functional>

#include "fem/solver.h"
#include "model/model.h"

namespace quillane {

/// The solver's tolerance on the residual, and the smallest pivot of its factorization.
inline constexpr double kSolverTolerance = 1.0e-6;

/// Runs element stiffness, numbering, assembly, compression, solve, displacements, stresses and
/// volume on the present active nodes. stressesReady, where given, is called as soon as the
/// stresses stand. Throws RunTimeError, the model left as the failed step left it.
SolveReport AnalyseStructure(Model& model, const std::function<void()>& stressesReady = {});

}  // namespace quillane
