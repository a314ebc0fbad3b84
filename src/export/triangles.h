// Polygons cut into triangles.
#pragma once

#include <array>
#include <vector>

#include "export/point.h"

namespace quillane {

/// Returns triangles that cover a counter-clockwise polygon and have its vertices as corners, each
/// counter-clockwise; none if the polygon is not simple or a triangle would be degenerate.
/// Cuts off the fattest ear first, in a time that grows with the cube of the number of vertices.
std::vector<std::array<Point, 3>> Triangles(std::vector<Point> polygon);

}  // namespace quillane
