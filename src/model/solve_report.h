// What is known of the last solve.
#pragma once

namespace quillane {

/// What became of one solve, to be reported: nothing is computed from it.
struct SolveReport {
  int equations = 0;
  int iterations = 0;
  double relativeResidual = 0.0;  ///< |f - K u| / |f| as the iteration itself carries it
  double trueResidual = 0.0;      ///< the same, computed anew from the solution
  bool converged = false;         ///< the iteration stopped by itself, and the true residual agrees
};

}  // namespace quillane
