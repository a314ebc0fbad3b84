// Product and preconditioner applied to a given vector.
#include "support/solver_forms.h"

#include <algorithm>

#include "fem/analysis.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/wave_passes.h"

namespace quillane::test {

SolverPieces PlainPieces(Model m, const Vector& x) {
  AssembleEquations(m);
  const Integer n = m.EquationCount;
  TransposeRows(n, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn, m.LowerColumn,
                m.UpperValue, m.LowerValue, m.TransposeFill);
  IncompleteCholesky(n, kRowCapacity, m.LowerCount, m.LowerColumn, m.LowerValue, m.DiagonalValue,
                     m.FactorLower, m.FactorInvDiag, kSolverTolerance);
  TransposeRows(n, kRowCapacity, m.LowerCount, m.UpperCount, m.LowerColumn, m.UpperColumn,
                m.FactorLower, m.FactorUpper, m.TransposeFill);
  std::ranges::copy(x, m.DirectionVector.Raw().begin());
  ApplyPreconditioner(n, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn, m.LowerColumn,
                      m.FactorUpper, m.FactorLower, m.FactorInvDiag, m.DirectionVector,
                      m.PrecondVector);
  MatrixVectorProduct(n, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn, m.LowerColumn,
                      m.UpperValue, m.LowerValue, m.DiagonalValue, m.PrecondVector,
                      m.ProductVector);
  const auto values = [](const Array1<Double>& array) {
    return Vector(array.Raw().begin(), array.Raw().end());
  };
  return {values(m.PrecondVector), values(m.ProductVector)};
}

std::optional<SolverPieces> WavePieces(Model m, const Vector& x) {
  CalcElementStiffness(m);
  NumberComponents(m);
  std::optional<WaveSystem> system = LayOutWaves(m);
  if (!system || !Factorize(*system, kSolverTolerance)) return std::nullopt;
  const auto take = [&](std::vector<QuadNumbers>& vector) {
    Vector values(x.size(), 0.0);
    system->ForEachEquation(vector, [&](int equation, double& number) {
      values[static_cast<std::size_t>(equation)] = number;
    });
    return values;
  };
  for (auto* vector : {&system->r, &system->p}) {
    system->ForEachEquation(*vector, [&](int equation, double& number) {
      number = x[static_cast<std::size_t>(equation)];
    });
  }
  ForwardPass(*system, 0.0);
  BackwardPass(*system, 0.0);  // p becomes z
  return SolverPieces{take(system->p), take(system->yq)};
}

}  // namespace quillane::test
