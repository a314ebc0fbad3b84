#include "model/coupling_matrix.h"

#include <algorithm>
#include <new>
#include <string>

#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {

void CouplingMatrix::ReDim(int n) {
  const auto rows = static_cast<std::size_t>(n) + 1;
  try {
    count_.assign(rows, 0);
    slots_.resize(rows * kRowSlots);
  } catch (const std::bad_alloc&) {
    throw RunTimeError(ErrorKind::kOutOfMemory, "no memory for StiffnessMatrix");
  }
  spill_.clear();
  upperIndex_ = n;
}

void CouplingMatrix::CheckSubscript(int p, int q) const {
  if (p < 0 || p > upperIndex_ || q < 0 || q > upperIndex_) {
    throw RunTimeError(ErrorKind::kSubscript, "StiffnessMatrix(" + std::to_string(p) + ", " +
                                                  std::to_string(q) + ") lies outside 0 to " +
                                                  std::to_string(upperIndex_));
  }
}

std::span<const CouplingMatrix::Entry> CouplingMatrix::Slots(int p) const {
  const auto row = static_cast<std::size_t>(p);
  return std::span(slots_).subspan(row * kRowSlots, static_cast<std::size_t>(count_[row]));
}

double CouplingMatrix::operator()(int p, int q) const {
  CheckSubscript(p, q);
  const auto slots = Slots(p);
  const auto at = std::ranges::lower_bound(slots, q, {}, &Entry::column);
  if (at != slots.end() && at->column == q) return at->value;
  const auto spilled = spill_.find({p, q});
  return spilled == spill_.end() ? 0.0 : spilled->second;
}

void CouplingMatrix::Add(int p, int q, double value) {
  CheckSubscript(p, q);
  const auto row = static_cast<std::size_t>(p);
  Entry* const begin = slots_.data() + row * kRowSlots;
  Entry* const end = begin + count_[row];
  Entry* const at = std::ranges::lower_bound(begin, end, q, {}, &Entry::column);
  double* entry = nullptr;
  if (at != end && at->column == q) {
    entry = &at->value;
  } else if (count_[row] < kRowSlots) {
    std::move_backward(at, end, end + 1);
    *at = {q, 0.0};
    ++count_[row];
    entry = &at->value;
  } else {
    entry = &spill_[{p, q}];
  }
  *entry = Finite(*entry + value, "an entry of the stiffness matrix");
}

std::span<const CouplingMatrix::Entry> CouplingMatrix::Row(int p) const {
  CheckSubscript(p, 0);
  const auto slots = Slots(p);
  auto spilled = spill_.lower_bound({p, 0});
  if (spilled == spill_.end() || spilled->first.first != p) return slots;
  mergedRow_.assign(slots.begin(), slots.end());
  for (; spilled != spill_.end() && spilled->first.first == p; ++spilled) {
    mergedRow_.push_back({spilled->first.second, spilled->second});
  }
  std::ranges::sort(mergedRow_, {}, &Entry::column);
  return mergedRow_;
}

}  // namespace quillane
