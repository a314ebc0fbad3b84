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
    for (const auto& [column, value] : m.StiffnessMatrix.Row(i)) {
      if (value == 0.0 || (column > i && !isWhole)) continue;
      entries.emplace_back(i - 1, column - 1, value);
    }
  }
  Sparse stiffness(n, n);
  stiffness.setFromTriplets(entries.begin(), entries.end());
  return {stiffness, load};
}

}  // namespace quillane
