// The equations of a model as the library solvers take them.
#pragma once

#include <Eigen/SparseCore>
#include <utility>
#include <vector>

#include "fem/analysis.h"

namespace quillane {

using Sparse = Eigen::SparseMatrix<double>;

/// Stiffness, its lower triangle or the whole, and load.
inline std::pair<Sparse, Eigen::VectorXd> LibrarySystem(Model m, bool isWhole) {
  AssembleEquations(m);
  std::vector<Eigen::Triplet<double>> entries;
  const int n = m.EquationCount;
  Eigen::VectorXd load(n);
  for (int i = 1; i <= n; ++i) {
    load[i - 1] = m.LoadVector(i);
    for (const auto& entry : m.StiffnessMatrix.Row(i)) {
      if (entry.value == 0.0 || (entry.column > i && !isWhole)) continue;
      entries.emplace_back(i - 1, entry.column - 1, entry.value);
    }
  }
  Sparse stiffness(n, n);
  stiffness.setFromTriplets(entries.begin(), entries.end());
  return {stiffness, load};
}

}  // namespace quillane
