// Recognizes the circles that cut-out cells stand for.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "export/shape.h"

namespace quillane {

/// The edge between a hole of cut-out cells and the material as arcs of one circle.
struct CutOutCircle {
  Circle circle;
  std::vector<std::pair<int, int>> edges;      ///< corners, clockwise about the centre
  std::vector<std::pair<int, Point>> corners;  ///< of these edges, and their places on the circle
};

/// Returns the circles of the regions of cut-out cells that are connected by edges and look like a
/// digitized disc: to a tenth of a cell, the middles of the region's cells lie within the circle
/// and those of the domain's cells beside it outside. The centre is that of the least-squares fit
/// to the region's edge inside the domain, and so is the radius unless another one is needed to
/// separate the cells. For a region cut by the edge of the domain a centre on that edge, or in its
/// corner, comes first; otherwise the centre lies in the domain or within 1.5 cells of it.
/// A rectangle counts as a circle only if it is a square of up to three cells inside the domain.
std::vector<CutOutCircle> FindCutOutCircles(const Shape& shape, const Model& model);

}  // namespace quillane
