// The assembled square stiffness matrix, holding only the entries that elements couple.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace quillane {

/// A square matrix of doubles with both indices 0..n, zero wherever nothing was added. On a grid
/// numbered row by row an equation couples to 17 others (nine nodes of two components, less
/// itself), so each row keeps room for 18 entries in ascending column order; the rows of a mesh
/// that couples more spill into an ordered map. Memory grows with n, never with its square.
class CouplingMatrix {
 public:
  struct Entry {
    std::int32_t column = 0;
    double value = 0.0;
  };

  /// Re-creates the matrix with both indices 0..n, all zero. Throws RunTimeError (out of memory).
  void ReDim(int n);

  /// Entry (p, q), zero where nothing was added. Throws RunTimeError (subscript) outside 0..n.
  double operator()(int p, int q) const;

  /// Adds to entry (p, q). Throws RunTimeError: subscript outside 0..n, floating point where the
  /// sum is not finite.
  void Add(int p, int q, double value);

  /// The entries of row p in ascending column order; those never added to do not appear.
  /// The span is valid until the next call of a non-const member or of Row.
  std::span<const Entry> Row(int p) const;

 private:
  static constexpr int kRowSlots = 18;

  void CheckSubscript(int p, int q) const;
  std::span<const Entry> Slots(int p) const;

  int upperIndex_ = -1;
  std::vector<std::int8_t> count_;
  std::vector<Entry> slots_;  // row p occupies [p * kRowSlots, p * kRowSlots + count_[p])
  std::map<std::pair<int, int>, double> spill_;
  mutable std::vector<Entry> mergedRow_;
};

}  // namespace quillane
