#include "model/coupling_matrix.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <string>

#include "model/numbers.h"

namespace quillane {
namespace {

/// What an equation of a grid numbered row by row couples to: nine nodes of two components.
constexpr std::size_t kEntriesOfAGrid = 18;

}  // namespace

void CouplingMatrix::ReDim(int n) {
  try {
    rows_.resize(static_cast<std::size_t>(n) + 1);
    for (std::vector<Entry>& row : rows_) {
      row.clear();
      row.reserve(kEntriesOfAGrid);
    }
  } catch (const std::bad_alloc&) {
    throw RunTimeError(ErrorKind::kOutOfMemory, "no memory for StiffnessMatrix");
  }
}

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
  const std::span<const Entry> row = Row(p);
  const auto at = std::ranges::lower_bound(row, q, {}, &Entry::column);
  return at != row.end() && at->column == q ? at->value : 0.0;
}

void CouplingMatrix::Add(int p, int q, double value) {
  CheckSubscript(p, q);
  std::vector<Entry>& row = rows_[static_cast<std::size_t>(p)];
  auto at = std::ranges::lower_bound(row, q, {}, &Entry::column);
  if (at == row.end() || at->column != q) at = row.insert(at, {q, 0.0});
  at->value = Finite(at->value + value, "an entry of the stiffness matrix");
}

std::span<const CouplingMatrix::Entry> CouplingMatrix::Row(int p) const {
  CheckSubscript(p, 0);
  return rows_[static_cast<std::size_t>(p)];
}

}  // namespace quillane
