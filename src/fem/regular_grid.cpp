// The mesh and its numbering held against those of BuildMesh and NumberEquations.
#include "fem/regular_grid.h"

namespace quillane {
namespace {

bool IsRegularMesh(const Model& model) {
  const int rows = model.CellRowCount;
  const int columns = model.CellColumnCount;
  if (rows < 1 || columns < 1 || model.NodeCount != (rows + 1) * (columns + 1) ||
      model.ElementCount != rows * columns) {
    return false;
  }
  if (model.ElementNodes.First() != IndexRange{0, model.ElementCount} ||
      model.ElementNodes.Second() != IndexRange{1, 4}) {
    return false;
  }
  const int corner[] = {0, 1, columns + 2, columns + 1};
  const Integer* node = model.ElementNodes.Raw().data();
  bool isRegular = true;
  for (const int offset : corner) {
    ++node;  // element 0
    for (int i = 0; i < rows; ++i, node += columns) {
      const int first = (columns + 1) * i + 1 + offset;
      for (int j = 0; j < columns; ++j) isRegular &= node[j] == first + j;
    }
  }
  return isRegular;
}

bool IsDenselyNumbered(const Model& model) {
  const IndexRange nodes{0, model.NodeCount};
  const IndexRange components{1, 2};
  if (model.DofNumber.First() != nodes || model.DofNumber.Second() != components) return false;
  const auto numbersU = model.DofNumber.Column(1, model.NodeCount);
  const auto numbersV = model.DofNumber.Column(2, model.NodeCount);
  int count = 0;
  for (std::size_t n = 1; n < numbersU.size(); ++n) {
    if (numbersU[n] != 0 && numbersU[n] != ++count) return false;
    if (numbersV[n] != 0 && numbersV[n] != ++count) return false;
  }
  return count == model.EquationCount;
}

}  // namespace

bool IsRegularGrid(const Model& model) {
  return IsRegularMesh(model) && IsDenselyNumbered(model) &&
         model.CellState.First() == IndexRange{1, model.CellRowCount} &&
         model.CellState.Second() == IndexRange{1, model.CellColumnCount};
}

}  // namespace quillane
