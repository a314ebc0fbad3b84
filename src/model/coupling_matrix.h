// The assembled square stiffness matrix, holding only the entries that elements couple.
#pragma once

#include <map>
#include <vector>

namespace quillane {

/// A square matrix of doubles with both indices 0..n, zero wherever nothing was added. Memory grows
/// with the entries, never with the square of n.
class CouplingMatrix {
 public:
  /// Re-creates the matrix with both indices 0..n, all zero.
  void ReDim(int n) { rows_.assign(static_cast<std::size_t>(n) + 1, {}); }

  /// Returns entry (p, q), zero where nothing was added. Throws RunTimeError (subscript) outside
  /// 0..n.
  double operator()(int p, int q) const;

  /// Adds to entry (p, q). Throws RunTimeError: subscript outside 0..n, floating point where the
  /// sum is not finite.
  void Add(int p, int q, double value);

  /// Returns the entries of row p that were added to, by column.
  const std::map<int, double>& Row(int p) const;

 private:
  void CheckSubscript(int p, int q) const;

  std::vector<std::map<int, double>> rows_;
};

}  // namespace quillane
