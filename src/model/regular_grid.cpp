#include "model/regular_grid.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace quillane {

bool GridFits(int rows, int columns) {
  return rows >= 1 && columns >= 1 && (rows + 1.0) * (columns + 1.0) <= kIntegerMax;
}

bool CountsMatchGrid(const Model& model) {
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  return rows >= 1 && columns >= 1 && model.NodeCount == (rows + 1) * (columns + 1) &&
         model.ElementCount == rows * columns;
}

std::array<int, 4> NodesOfCell(const Model& model, int row, int column) {
  const int lower = NodeOfCorner(model, row, column), upper = NodeOfCorner(model, row + 1, column);
  return {lower, lower + 1, upper + 1, upper};
}

bool HasRegularElements(const Model& model) {
  if (!CountsMatchGrid(model)) return false;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const std::array<int, 4> nodes = NodesOfElement(model, ElementOfCell(model, i, j));
      if (nodes != NodesOfCell(model, i, j)) return false;
    }
  }
  return true;
}

std::vector<MisplacedNode> MisplacedNodes(const Model& model, double left, double lower) {
  const double size = double{model.ElementSize};
  const auto slack = [size](int cells, double first) {
    const double farthest = std::max(std::fabs(first), std::fabs(first + cells * size)) / size;
    return size * std::min(0.5, 0.01 + cells * double{FLT_EPSILON} * farthest);
  };
  const double slackX = slack(model.CellColumnCount, left),
               slackY = slack(model.CellRowCount, lower);
  std::vector<MisplacedNode> misplaced;
  for (int i = 0; i <= model.CellRowCount; ++i) {
    for (int j = 0; j <= model.CellColumnCount; ++j) {
      const int node = NodeOfCorner(model, i + 1, j + 1);
      const double x = left + j * size, y = lower + i * size;
      const bool isNear = std::fabs(model.NodeXY(node, 1) - x) <= slackX &&
                          std::fabs(model.NodeXY(node, 2) - y) <= slackY;
      if (!isNear) misplaced.push_back({node, x, y});
    }
  }
  return misplaced;
}

}  // namespace quillane
