#include "fem/mesh.h"

#include <algorithm>

#include "model/numbers.h"
#include "model/regular_grid.h"

namespace quillane {
namespace {

constexpr ErrorCause kTooLarge = ErrorCause::kGridTooLarge;

/// Fills DofNumber and returns the number of equations.
int NumberNodes(Model& model) {
  int count = 0;
  for (int n = 1; n <= model.NodeCount; ++n) {
    if (model.NodeActive(n) != 1) continue;
    for (int d = 1; d <= 2; ++d) {
      if (model.NodeFreedom(n, d) != 0) continue;
      model.DofNumber(n, d) = ToInteger(++count, "the number of equations", kTooLarge);
    }
  }
  return count;
}

/// Copies the nodes' equation numbers into ElementDofs.
void NumberElements(Model& model) {
  for (int e = 1; e <= model.ElementCount; ++e) {
    int at = 0;
    for (const int node : NodesOfElement(model, e)) {
      for (int d = 1; d <= 2; ++d) model.ElementDofs(e, ++at) = model.DofNumber(node, d);
    }
  }
}

}  // namespace

void BuildMesh(Model& model, int rows, int columns) {
  const Integer nodeCount =
      ToInteger((rows + 1.0) * (columns + 1.0), "the number of nodes", kTooLarge);
  const Integer elementCount =
      ToInteger(double{1} * rows * columns, "the number of elements", kTooLarge);
  model.CellRowCount = ToInteger(rows, "the number of rows", kTooLarge);
  model.CellColumnCount = ToInteger(columns, "the number of columns", kTooLarge);
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
      const std::array<int, 4> nodes = NodesOfCell(model, i, j);
      for (int k = 1; k <= 4; ++k) {
        model.ElementNodes(e, k) = static_cast<Integer>(nodes[static_cast<std::size_t>(k) - 1]);
      }
    }
  }
}

void MarkActiveNodes(Model& model) {
  std::ranges::fill(model.NodeActive.Raw(), Integer{0});
  std::ranges::fill(model.DofNumber.Raw(), Integer{0});
  std::ranges::fill(model.ElementDofs.Raw(), Integer{0});
  ForEachPresentCell(model, [&model](int, int, int element) {
    for (const int node : NodesOfElement(model, element)) model.NodeActive(node) = 1;
  });
}

void NumberComponents(Model& model) {
  const int count = NumberNodes(model);
  model.EquationCount = static_cast<Integer>(count);
  NumberElements(model);
  model.LoadVector.ReDim(0, count);
}

void CreateEquationArrays(Model& model) {
  const int n = model.EquationCount;
  model.SolutionVector.ReDim(0, n);
  model.Solved.report.reset();
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

void NumberEquations(Model& model) {
  NumberComponents(model);
  CreateEquationArrays(model);
}

}  // namespace quillane
