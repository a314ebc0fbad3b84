// The material of a plate as a shape in the plane: its cells, and its edge as closed loops.
#pragma once

#include <array>
#include <vector>

#include "export/point.h"
#include "model/model.h"

namespace quillane {

/// Cells that hold material, and the loops between them and what is empty. A loop visits a corner
/// once and has the material on its left: counter-clockwise round material, clockwise round a hole.
/// Where cells touch in a corner only, two loops visit it.
struct Shape {
  std::vector<Point> corners;             ///< of the grid, by node number; index 0 is unused
  std::vector<std::array<int, 4>> cells;  ///< corners of each cell, counter-clockwise
  std::vector<std::vector<int>> loops;    ///< corners along each loop, every one that it passes
};

/// The shape of the cells with material. Its corners lie ElementSize apart from the place of
/// node 1. Throws FileWriteError where the plate has no material, or where the model is no regular
/// grid: counts, places of nodes (to a hundredth of a cell) or nodes of elements that differ from
/// those of a domain of its size.
Shape TraceShape(const Model& model);

/// The loops as polygons, straight runs as one segment.
std::vector<std::vector<Point>> Outline(const Shape& shape);

/// What a loop encloses, negative for a hole; what the shape covers. mm^2
double LoopArea(const Shape& shape, const std::vector<int>& loop);
double Area(const Shape& shape);

}  // namespace quillane
