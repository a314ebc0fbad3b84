// A usable edge from the staircase of the cells.
#pragma once

#include "export/shape.h"

namespace quillane {

/// The farthest that a corner moves in x or y, in edges of a cell. Since it is below a half, no
/// loop can cross itself or another, and the middle of every cell stays in the material or outside.
inline constexpr double kSmoothingReach = 0.47;

/// The least width that a member one cell wide keeps, in edges of a cell.
inline constexpr double kThinnestMember = 0.5;

/// The largest change of the area by smoothing, as a part of it.
inline constexpr double kLargestAreaChange = 0.009;

/// Which parts of the edge are smoothed.
enum class SmoothEdges {
  kDesign,  ///< those between design cells and emptied ones: what has to fit stays
  kAll,     ///< those of cut-out and non-design cells, too; what looks like a circle becomes one
};

/// Returns the shape with its edge smoothed. These corners stay in any case: at the edge of the
/// domain, with supports or loads, and where cells touch in a corner only; but circles of cut-out
/// cells (see FindCutOutCircles) take theirs with them. shape is that of the model's cells as they
/// stand. Source of the filter: G. Taubin, "A signal processing approach to fair surface design",
/// SIGGRAPH 1995.
Shape Smoothed(const Shape& shape, const Model& model, SmoothEdges edges = SmoothEdges::kDesign);

}  // namespace quillane
