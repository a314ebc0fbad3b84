// The order in which the grid solver keeps numbers of nodes: grid rows side by side in lanes.
#pragma once

#include <cstddef>

namespace quillane {

/// Grid rows that advance together, one per lane. A multiple of every processor's vector length.
inline constexpr std::ptrdiff_t kGridLanes = 16;

/// Places node (row, column), both from 0, of a grid of nodes in memory. Row i runs in lane
/// i mod kGridLanes; slot t holds one number of every lane. A row starts `skew` slots after the row
/// below it, so when a slot's turn comes the nodes below and to the left of all its nodes are done,
/// and those above and to the right are not begun. A lane's next row starts rowSlots slots after
/// its last one; with rowSlots = skew * kGridLanes + 1 the row below lies at the same distance in
/// memory for lane 0, whose lower row runs in the last lane, as for every other lane: every
/// neighbour of every node stands at one constant offset. Between two rows of a lane lies at least
/// one slot that belongs to no node and holds zeros.
class SkewedGrid {
 public:
  SkewedGrid(int nodeRows, int nodeColumns);

  int Rows() const { return rows_; }
  int Columns() const { return columns_; }

  /// Slots from the first node's to the last one's, segments of them (see Start), and the slots to
  /// keep zero before and after.
  std::ptrdiff_t Slots() const { return Start(rows_ - 1) + rowSlots_; }
  std::ptrdiff_t Segments() const { return rows_ + kGridLanes - 1; }
  std::ptrdiff_t GuardSlots() const { return skew_ + 3; }

  /// Slot in which a row's first node stands. Rows past the last one are allowed. The slots from
  /// Start(k) to Start(k + 1) form segment k, in which lane k mod kGridLanes begins row k; a row
  /// runs through kGridLanes segments.
  std::ptrdiff_t Start(std::ptrdiff_t row) const {
    return rowSlots_ * (row / kGridLanes) + skew_ * (row % kGridLanes);
  }
  std::ptrdiff_t At(std::ptrdiff_t row, std::ptrdiff_t column) const {
    return (Start(row) + column) * kGridLanes + row % kGridLanes;
  }

  /// Offset of the neighbour `up` rows above and `right` columns to the right (each -1, 0 or 1).
  std::ptrdiff_t Offset(int up, int right) const {
    return up * (skew_ * kGridLanes + 1) + right * kGridLanes;
  }

  friend bool operator==(const SkewedGrid&, const SkewedGrid&) = default;

 private:
  int rows_;
  int columns_;
  std::ptrdiff_t skew_;
  std::ptrdiff_t rowSlots_;
};

}  // namespace quillane
