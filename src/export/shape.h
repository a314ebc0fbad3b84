// The material of a plate as a shape in the plane: its cells, and its edge as closed loops.
#pragma once

#include <array>
#include <map>
#include <utility>
#include <vector>

#include "export/circle.h"
#include "model/model.h"

namespace quillane {

/// The corners of a cell by node number, counter-clockwise.
using Cell = std::array<int, 4>;

/// The cells with material and the loops around them. A loop visits a corner once and has the
/// material on its left: counter-clockwise around material, clockwise around a hole. Two loops
/// visit a corner in which cells only touch.
struct Shape {
  double cell = 0;             ///< edge of a cell, mm
  std::vector<Point> corners;  ///< of the grid, by node number; index 0 is unused
  std::vector<Cell> cells;
  std::vector<std::vector<int>> loops;      ///< all corners along each loop
  std::vector<Circle> circles;              ///< along which some edges run clockwise
  std::map<std::pair<int, int>, int> arcs;  ///< by corners of such an edge: index of its circle

  Point At(int corner) const { return corners[static_cast<std::size_t>(corner)]; }
  Point& At(int corner) { return corners[static_cast<std::size_t>(corner)]; }
};

/// Returns the circle along which the edge between two corners of a loop runs; null if it is
/// straight.
const Circle* ArcOfEdge(const Shape& shape, int from, int to);

/// Returns the shape of the cells with material. Its corners lie ElementSize apart, the first one
/// at node 1. Throws FileWriteError if the plate has no material or the model is not a regular
/// grid: if counts, places of nodes (by more than a hundredth of a cell) or nodes of elements
/// differ from those of a domain of its size.
Shape TraceShape(const Model& model);

/// Returns the corners that two loops visit.
std::vector<int> CornerContacts(const Shape& shape);

/// Returns the area (mm^2) that a loop encloses, negative for a hole; the area of the whole shape.
double LoopArea(const Shape& shape, const std::vector<int>& loop);
double Area(const Shape& shape);

}  // namespace quillane
