// A rectangular plate to which cells, supports and loads are given by row and column.
#pragma once

#include <algorithm>
#include <cmath>

#include "fem/mesh.h"
#include "model/model.h"
#include "model/regular_grid.h"

namespace quillane {

/// A plate of design cells with its lower left corner at the origin, seen whole in the view. Cells
/// and nodes are named by row (upward) and column (rightward), both from 1.
class RectangularPlate {
 public:
  /// elementSize: mm.
  RectangularPlate(int rows, int columns, Single elementSize) {
    model_.ElementSize = elementSize;
    model_.DomainX2 = static_cast<Single>(columns) * elementSize;
    model_.DomainY2 = static_cast<Single>(rows) * elementSize;
    // The view is taken to be 0.8 times as high as wide; its centre is the plate's.
    const Single span = std::max(model_.DomainX2, 1.25F * model_.DomainY2);
    model_.DomainWidth = 1.25F * span;
    model_.OriginFracX = 0.5F + 0.5F * model_.DomainX2 / model_.DomainWidth;
    model_.OriginFracY = 0.5F + 0.625F * model_.DomainY2 / model_.DomainWidth;
    BuildMesh(model_, rows, columns);
    Cells(1, rows, 1, columns, kCellDesign);
  }

  /// Sets the state of rows r1..r2 and columns c1..c2.
  void Cells(int r1, int r2, int c1, int c2, Integer state) {
    for (int i = r1; i <= r2; ++i) {
      for (int j = c1; j <= c2; ++j) model_.CellState(i, j) = state;
    }
  }

  /// Sets the state of the cells whose centre lies in a ring round (x, y), in cells from the
  /// plate's lower left corner.
  void Ring(double x, double y, double inner, double outer, Integer state) {
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j) {
        const double distance = std::hypot(j - 0.5 - x, i - 0.5 - y);
        if (distance >= inner && distance < outer) model_.CellState(i, j) = state;
      }
    }
  }

  /// Fixes or frees the node in x and in y.
  void Hold(int row, int column, bool x, bool y) {
    const int node = NodeOfCorner(model_, row, column);
    model_.NodeFreedom(node, 1) = x ? 1 : 0;
    model_.NodeFreedom(node, 2) = y ? 1 : 0;
  }

  /// Sets the force on the node. fx, fy: N.
  void Load(int row, int column, double fx, double fy) {
    const int node = NodeOfCorner(model_, row, column);
    model_.NodeLoad(node, 1) = fx;
    model_.NodeLoad(node, 2) = fy;
  }

  const Model& Result() const { return model_; }

 protected:
  Model model_;
};

}  // namespace quillane
