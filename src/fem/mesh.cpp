// Mesh layout and equation numbering.
#include "fem/mesh.h"

#include <algorithm>

#include "model/numbers.h"

namespace quillane {
namespace {

/// Re-creates, zero-filled, what assembly, compression and the solver write.
void ReDimEquationSystem(Model& model) {
  const int n = model.EquationCount;
  model.StiffnessMatrix.ReDim(n);
  for (auto* vector : {&model.DiagonalValue, &model.FactorInvDiag, &model.ResidualVector,
                       &model.DirectionVector, &model.PrecondVector, &model.ProductVector}) {
    vector->ReDim(0, n);
  }
  for (auto* counts : {&model.UpperCount, &model.LowerCount, &model.TransposeFill}) {
    counts->ReDim(0, n);
  }
  const IndexRange slots{0, kRowCapacity};
  for (auto* columns : {&model.UpperColumn, &model.LowerColumn}) columns->ReDim(slots, {0, n});
  for (auto* values :
       {&model.UpperValue, &model.LowerValue, &model.FactorUpper, &model.FactorLower}) {
    values->ReDim(slots, {0, n});
  }
}

}  // namespace

void BuildMesh(Model& model, int rows, int columns) {
  const double nodes = (rows + 1.0) * (columns + 1.0);
  const Integer nodeCount = ToInteger(nodes, "the number of nodes");
  const Integer elementCount = ToInteger(double{1} * rows * columns, "the number of elements");
  model.CellRowCount = ToInteger(rows, "the number of rows");
  model.CellColumnCount = ToInteger(columns, "the number of columns");
  model.NodeCount = nodeCount;
  model.ElementCount = elementCount;
  ReDimGridArrays(model);

  int node = 0;
  Single y = model.DomainY1;
  for (int i = 1; i <= rows + 1; ++i, y += model.ElementSize) {
    Single x = model.DomainX1;
    for (int j = 1; j <= columns + 1; ++j, x += model.ElementSize) {
      ++node;
      model.NodeXY(node, 1) = double{x};
      model.NodeXY(node, 2) = double{y};
    }
  }
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const int e = ElementOfCell(model, i, j);
      const int lowerLeft = (columns + 1) * (i - 1) + j;
      model.ElementNodes(e, 1) = static_cast<Integer>(lowerLeft);
      model.ElementNodes(e, 2) = static_cast<Integer>(lowerLeft + 1);
      model.ElementNodes(e, 3) = static_cast<Integer>(lowerLeft + columns + 2);
      model.ElementNodes(e, 4) = static_cast<Integer>(lowerLeft + columns + 1);
    }
  }
}

void MarkActiveNodes(Model& model) {
  std::ranges::fill(model.NodeActive.Raw(), Integer{0});
  std::ranges::fill(model.DofNumber.Raw(), Integer{0});
  std::ranges::fill(model.ElementDofs.Raw(), Integer{0});
  for (int j = 1; j <= model.CellColumnCount; ++j) {
    for (int i = 1; i <= model.CellRowCount; ++i) {
      if (model.CellState(i, j) <= 0) continue;
      const int e = ElementOfCell(model, i, j);
      for (int k = 1; k <= 4; ++k) model.NodeActive(model.ElementNodes(e, k)) = 1;
    }
  }
}

void NumberComponents(Model& model) {
  int count = 0;
  const auto number = [&count](Integer freedom, Integer& equation) {
    if (freedom != 0) return;
    ++count;
    if (count > kIntegerMax) ToInteger(count, "the number of equations (the grid is too large)");
    equation = static_cast<Integer>(count);
  };
  if (model.NodeCount > 0) {
    const auto freedomX = model.NodeFreedom.Column(1), freedomY = model.NodeFreedom.Column(2);
    const auto numberX = model.DofNumber.Column(1), numberY = model.DofNumber.Column(2);
    for (std::size_t n = 1; n < numberX.size(); ++n) {
      if (model.NodeActive(static_cast<int>(n)) != 1) continue;
      number(freedomX[n], numberX[n]);
      number(freedomY[n], numberY[n]);
    }
  }
  model.EquationCount = static_cast<Integer>(count);
  for (int k = 1; k <= 4 && model.ElementCount > 0; ++k) {
    for (int d = 1; d <= 2; ++d) {
      const auto nodes = model.ElementNodes.Column(k);
      const auto numbers = model.DofNumber.Column(d);
      const auto dofs = model.ElementDofs.Column(2 * k - 2 + d);
      for (std::size_t e = 1; e < dofs.size(); ++e) {
        const auto node = static_cast<std::size_t>(nodes[e]);  // a negative one is large
        if (node >= numbers.size()) (void)model.DofNumber(nodes[e], d);
        dofs[e] = numbers[node];
      }
    }
  }
  model.LoadVector.ReDim(0, count);
  model.SolutionVector.ReDim(0, count);
}

void NumberEquations(Model& model) {
  NumberComponents(model);
  ReDimEquationSystem(model);
}

}  // namespace quillane
