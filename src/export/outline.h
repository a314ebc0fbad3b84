// The outline of a shape as a drawing has it: segments and arcs.
#pragma once

#include <array>
#include <vector>

#include "export/shape.h"

namespace quillane {

/// A vertex of a contour and the way on to the next one.
struct Vertex {
  Point place;
  int circle = kStraight;  ///< index of the circle along which a clockwise arc leads on
};

/// A closed loop. A single vertex stands for a full circle.
using Contour = std::vector<Vertex>;

/// Returns the contours of the shape's loops. A straight run is one segment, a run along one circle
/// one arc.
std::vector<Contour> Outline(const Shape& shape);

/// Returns the contours as polygons whose chords lie within `deviation` (mm) of the arcs.
std::vector<std::vector<Point>> Polygons(const Shape& shape, const std::vector<Contour>& outline,
                                         double deviation);

/// Returns what a cell covers as a polygon, counter-clockwise from its first corner, with chords
/// within `deviation` (mm) of the arcs.
std::vector<Point> CellPolygon(const Shape& shape, const std::array<int, 4>& cell,
                               double deviation);

}  // namespace quillane
