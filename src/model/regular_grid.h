// The regular grid: how its nodes and elements are numbered and where they lie.
#pragma once

#include <array>
#include <vector>

#include "model/model.h"

namespace quillane {

/// Returns whether a grid of rows by columns cells has cells and at most 32767 nodes.
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

/// A node that does not lie where the grid has it.
struct MisplacedNode {
  int node;
  double x, y;  ///< where it should lie, mm
};

/// Returns the misplaced nodes, ascending, of a grid whose lower left corner is (left, lower), mm.
/// Tolerates a hundredth of a cell and the rounding errors of the sums that BuildMesh takes in
/// single precision. Requires CountsMatchGrid.
std::vector<MisplacedNode> MisplacedNodes(const Model& model, double left, double lower);

}  // namespace quillane
