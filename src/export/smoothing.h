// A usable edge from the staircase of the cells.
#pragma once

#include "export/shape.h"

namespace quillane {

/// No corner moves farther than this in x or y, in edges of a cell. Below a half, no loop can cross
/// itself or another, and the middle of every cell stays where it was: in the material or out of
/// it.
inline constexpr double kSmoothingReach = 0.47;

/// A member one cell wide stays at least this wide, in edges of a cell.
inline constexpr double kThinnestMember = 0.5;

/// No shape changes its area by more than this part of it.
inline constexpr double kLargestAreaChange = 0.009;

/// The shape with its edge smoothed. What has to fit stays: corners at the edge of the domain, of
/// non-design and of cut-out cells, with supports or loads, and where cells touch in a corner only.
/// shape is that of the model's cells as they stand. Source of the filter: G. Taubin, "A signal
/// processing approach to fair surface design", SIGGRAPH 1995.
Shape Smoothed(const Shape& shape, const Model& model);

}  // namespace quillane
