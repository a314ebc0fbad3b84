// The regular grid: how its nodes and elements are numbered and where they lie.
#pragma once

#include <array>
#include <cstddef>
#include <utility>
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

/// A cell, or a corner of the grid, by its row (along y) and column (along x).
struct CellIndex {
  int row = 0;
  int column = 0;
  friend bool operator==(const CellIndex&, const CellIndex&) = default;
};

/// Returns the grid corner of a node, which is also the cell to its upper right.
inline CellIndex CornerOfNode(const Model& model, int node) {
  const int stride = model.CellColumnCount + 1;
  return {(node - 1) / stride + 1, (node - 1) % stride + 1};
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

/// Returns the edge-connected sets of the cells that belongs(row, column) accepts, in order of
/// their first cells, row by row.
template <class Belongs>
std::vector<std::vector<CellIndex>> ConnectedCells(const Model& model, const Belongs& belongs) {
  std::vector<char> visited(static_cast<std::size_t>(model.CellRowCount) *
                            static_cast<std::size_t>(model.CellColumnCount));
  std::vector<CellIndex> cells;
  const auto visit = [&](int row, int column) {
    if (!IsCell(model, row, column) || !belongs(row, column)) return;
    char& known = visited[static_cast<std::size_t>(ElementOfCell(model, row, column)) - 1];
    if (std::exchange(known, 1) == 0) cells.push_back({row, column});
  };
  std::vector<std::vector<CellIndex>> sets;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      visit(i, j);
      for (std::size_t next = 0; next < cells.size(); ++next) {
        const auto [row, column] = cells[next];
        visit(row + 1, column);
        visit(row, column + 1);
        visit(row - 1, column);
        visit(row, column - 1);
      }
      if (!cells.empty()) sets.push_back(std::exchange(cells, {}));
    }
  }
  return sets;
}

}  // namespace quillane
