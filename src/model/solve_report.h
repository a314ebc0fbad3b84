// What is known of the last solve.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/types.h"

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
  int rows = 0, columns = 0;              ///< of cells
  std::vector<std::uint8_t> isPresent;    ///< of every cell: 1 or 0
  std::vector<Integer> nodes, equations;  ///< ElementNodes and DofNumber
  std::vector<Double> stiffness, loads;   ///< ElementStiffness and LoadVector

  friend bool operator==(const EquationSystem&, const EquationSystem&) = default;
};

/// The system that SolutionVector solves and the outcome; no report if the last solve failed.
struct LastSolve {
  EquationSystem system;
  std::optional<SolveReport> report;
};

}  // namespace quillane
