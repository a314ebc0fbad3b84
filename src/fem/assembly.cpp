#include "fem/assembly.h"

namespace quillane {

void AssembleStiffness(Model& model) {
  ForEachPresentCell(model, [&model](int, int, int e) {
    for (int a = 1; a <= 8; ++a) {
      const int p = model.ElementDofs(e, a);
      if (p == 0) continue;
      for (int b = 1; b <= 8; ++b) {
        const int q = model.ElementDofs(e, b);
        if (q != 0) model.StiffnessMatrix.Add(p, q, model.ElementStiffness[a][b]);
      }
    }
  });
}

void AssembleLoads(Model& model) {
  for (int n = 1; n <= model.NodeCount; ++n) {
    for (int d = 1; d <= 2; ++d) {
      const int equation = model.DofNumber(n, d);
      if (equation != 0) model.LoadVector(equation) = model.NodeLoad(n, d);
    }
  }
}

void CompressStiffness(Integer n, Integer /*capacity*/, Array1<Integer>& upperCount,
                       Array2<Integer>& upperColumn, Array2<Double>& upperValue,
                       Array1<Double>& diagonalValue, const CouplingMatrix& stiffness,
                       const Array1<Double>& /*load*/, Array1<Double>& solution) {
  for (int i = 1; i <= n; ++i) {
    upperCount(i) = 0;
    for (const auto& [column, value] : stiffness.Row(i)) {
      if (column <= i || value == 0.0) continue;
      const Integer slot = ++upperCount(i);
      upperColumn(slot, i) = static_cast<Integer>(column);
      upperValue(slot, i) = value;
    }
    diagonalValue(i) = stiffness(i, i);
    solution(i) = 0.0;
  }
}

}  // namespace quillane
