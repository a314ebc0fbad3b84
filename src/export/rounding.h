// Puts the circles that cut-out cells stand for into a shape.
#pragma once

#include <vector>

#include "export/cut_out_circles.h"
#include "export/shape.h"

namespace quillane {

/// Moves the corners of these circles onto them and returns those that were added, in the order of
/// Shape::circles. A circle is left out where it would move a corner of an earlier one or one in
/// which cells only touch, fold a cell, or leave less than kThinnestMember of a member one cell
/// wide.
std::vector<CutOutCircle> AddCircles(Shape& shape, const Model& model,
                                     const std::vector<CutOutCircle>& circles);

/// Returns the indices of the shape's circles that cross another part of the outline or fold a
/// cell.
std::vector<int> FaultyCircles(const Shape& shape);

/// Returns the corners of the cells with two opposite sides on the edge, in the order first side,
/// other side.
std::vector<Cell> ThinCells(const Shape& shape, const Model& model);

/// Returns the distance (mm) between the two sides of a thin cell.
double ThinCellWidth(const Shape& shape, const Cell& cell);

}  // namespace quillane
