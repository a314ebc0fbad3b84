// The skew that keeps every neighbour at a constant offset.
#include "fem/skewed_grid.h"

#include <algorithm>

namespace quillane {

SkewedGrid::SkewedGrid(int nodeRows, int nodeColumns)
    : rows_(nodeRows),
      columns_(nodeColumns),
      skew_(std::max<std::ptrdiff_t>(3, (nodeColumns + kGridLanes - 1) / kGridLanes)),
      rowSlots_(skew_ * kGridLanes + 1) {}

}  // namespace quillane
