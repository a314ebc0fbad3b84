// Smooths the stairs of the cells along the edge of a shape.
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

/// The parts of the edge that are smoothed.
enum class SmoothEdges {
  kDesign,  ///< those between design cells and empty ones: what must fit other parts stays
  kAll,     ///< those of cut-out and non-design cells, too; digitized discs become circles
};

/// Returns the shape of the model with its edge smoothed. Corners at the edge of the domain, with
/// supports or loads, or in which cells only touch stay where they are, except that circles of
/// cut-out cells (see FindCutOutCircles) move theirs. shape: TraceShape(model). Source of the
/// filter: G. Taubin, "A signal processing approach to fair surface design", SIGGRAPH 1995.
Shape Smoothed(const Shape& shape, const Model& model, SmoothEdges edges = SmoothEdges::kDesign);

}  // namespace quillane
