// The regular grid: how its nodes and elements are numbered and where they lie.
#pragma once

#include <array>

#include "model/model.h"

namespace quillane {

/// Returns whether a grid has cells and no more nodes than an Integer counts.
bool GridFits(int rows, int columns);

/// Returns whether NodeCount and ElementCount are those of CellRowCount by CellColumnCount cells.
bool CountsMatchGrid(const Model& model);

/// Returns the number of the node at a grid corner: row 1..rows + 1, column 1..columns + 1, from
/// the lower left.
inline int NodeOfCorner(const Model& model, int row, int column) {
  return (row - 1) * (model.CellColumnCount + 1) + column;
}

/// Returns the nodes of a cell, counter-clockwise from its lower left.
std::array<int, 4> NodesOfCell(const Model& model, int row, int column);

/// Returns whether counts and ElementNodes are those that BuildMesh makes of the cells.
bool HasRegularElements(const Model& model);

/// How far x and y of a node may lie off a grid of the model's cells, mm: a hundredth of a cell and
/// what the sums of BuildMesh in single precision may be off.
struct GridSlack {
  double x, y;
};

/// Returns the slack of a grid from (left, lower) on, mm.
GridSlack SlackOfGrid(const Model& model, double left, double lower);

}  // namespace quillane
