// What is known of the last solve.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "model/types.h"

namespace quillane {

/// What became of one solve, to be reported: nothing is computed from it.
struct SolveReport {
  int equations = 0;
  int iterations = 0;
  double relativeResidual = 0.0;  ///< |f - K u| / |f| as the iteration itself carries it
  double trueResidual = 0.0;      ///< the same, computed anew from the solution
  bool converged = false;         ///< the iteration stopped by itself, and the true residual agrees
};

/// All that the displacements depend on, copied from the model: equal systems have equal solutions.
struct EquationSystem {
  int rows = 0, columns = 0;              ///< of cells
  std::vector<std::uint8_t> isPresent;    ///< of every cell: 1 or 0
  std::vector<Integer> nodes, equations;  ///< ElementNodes and DofNumber
  std::vector<Double> stiffness, loads;   ///< ElementStiffness and LoadVector

  friend bool operator==(const EquationSystem&, const EquationSystem&) = default;
};

/// The system that SolutionVector solves, and how it does; no report where the last solve failed.
struct LastSolve {
  EquationSystem system;
  std::optional<SolveReport> report;
};

}  // namespace quillane
