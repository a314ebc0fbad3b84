// The outline of a shape as a drawing has it: segments and arcs.
#pragma once

#include <vector>

#include "export/shape.h"

namespace quillane {

/// A segment, or an arc that runs clockwise.
struct Side {
  Point from, to;
  const Circle* arc = nullptr;  ///< the shape's circle along which it runs; null: straight
};

/// A closed loop of sides, each from the end of the one before. A single side is a full circle.
using Contour = std::vector<Side>;

/// Returns the contours of the shape's loops, which are valid as long as the shape. A straight run
/// is one segment, a run along one circle one arc.
std::vector<Contour> Outline(const Shape& shape);

/// Returns the contours as polygons whose chords lie within `deviation` (mm) of the arcs.
std::vector<std::vector<Point>> Polygons(const std::vector<Contour>& outline, double deviation);

struct Box {
  Point low, high;
};

/// Returns the bounding box of an outline. Its arcs bulge into the material, so the vertices
/// suffice.
Box Bounds(const std::vector<Contour>& outline);

/// Returns what a cell covers as a polygon, counter-clockwise from its first corner, with chords
/// within `deviation` (mm) of the arcs.
std::vector<Point> CellPolygon(const Shape& shape, const Cell& cell, double deviation);

}  // namespace quillane
