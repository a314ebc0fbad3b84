// What is known of the last solve.
#pragma once

#include <optional>
#include <vector>

#include "model/arrays.h"

namespace quillane {

/// The outcome of one solve, for reports only: nothing is computed from it.
struct SolveReport {
  int equations = 0;
  int iterations = 0;
  double relativeResidual = 0.0;  ///< |f - K u| / |f| as the iteration itself carries it
  double trueResidual = 0.0;      ///< the same, recomputed from the solution
  bool converged = false;         ///< the iteration met its tolerance and the true residual agrees
};

/// Everything that determines the displacements, copied from the model: equal systems have equal
/// solutions.
struct EquationSystem {
  Array2<Integer> nodes{"ElementNodes"}, equations{"DofNumber"};
  Array1<Double> loads{"LoadVector"};
  Double youngModulus = 0, poissonRatio = 0, thickness = 0;
  std::vector<int> elements{};  ///< of the cells that hold one

  bool operator==(const EquationSystem&) const = default;
};

/// The system that SolutionVector solves and the outcome; no report if the last solve failed.
struct LastSolve {
  EquationSystem system;
  std::optional<SolveReport> report;
};

}  // namespace quillane
