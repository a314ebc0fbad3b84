#include "model/coupling_matrix.h"

#include <iterator>
#include <string>

#include "model/numbers.h"

namespace quillane {

void CouplingMatrix::CheckSubscript(int p, int q) const {
  const auto size = std::ssize(rows_);
  if (p < 0 || p >= size || q < 0 || q >= size) {
    throw RunTimeError(ErrorKind::kSubscript, "StiffnessMatrix(" + std::to_string(p) + ", " +
                                                  std::to_string(q) + ") lies outside 0 to " +
                                                  std::to_string(size - 1));
  }
}

double CouplingMatrix::operator()(int p, int q) const {
  CheckSubscript(p, q);
  const auto entry = Row(p).find(q);
  return entry == Row(p).end() ? 0.0 : entry->second;
}

void CouplingMatrix::Add(int p, int q, double value) {
  CheckSubscript(p, q);
  double& entry = rows_[static_cast<std::size_t>(p)][q];
  entry = Finite(entry + value, "an entry of the stiffness matrix");
}

const std::map<int, double>& CouplingMatrix::Row(int p) const {
  CheckSubscript(p, 0);
  return rows_[static_cast<std::size_t>(p)];
}

}  // namespace quillane
