// The solver against a dense factorization, and its behaviour at the limits.
#include "fem/solver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "fem/analysis.h"
#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// The plain square matrix of a model, assembled element by element into n x n numbers.
std::vector<std::vector<double>> DenseStiffness(const Model& model) {
  const auto size = static_cast<std::size_t>(model.EquationCount) + 1;
  std::vector<std::vector<double>> k(size, std::vector<double>(size, 0.0));
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      if (model.CellState(i, j) <= 0) continue;
      for (int a = 1; a <= 8; ++a) {
        for (int b = 1; b <= 8; ++b) {
          const int e = ElementOfCell(model, i, j);
          k[static_cast<std::size_t>(model.ElementDofs(e, a))]
           [static_cast<std::size_t>(model.ElementDofs(e, b))] += model.ElementStiffness[a][b];
        }
      }
    }
  }
  return k;
}

/// Solves by Gaussian elimination without pivoting, which a positive definite matrix allows. Empty
/// where a pivot vanishes: something can move freely.
std::vector<double> DenseSolve(std::vector<std::vector<double>> k, std::vector<double> f) {
  const std::size_t n = f.size() - 1;
  for (std::size_t i = 1; i <= n; ++i) {
    if (k[i][i] < 1.0) return {};  // a held plate's pivots are of the size of E t
    for (std::size_t j = i + 1; j <= n; ++j) {
      const double factor = k[j][i] / k[i][i];
      for (std::size_t c = i; c <= n; ++c) k[j][c] -= factor * k[i][c];
      f[j] -= factor * f[i];
    }
  }
  for (std::size_t i = n; i >= 1; --i) {
    for (std::size_t c = i + 1; c <= n; ++c) f[i] -= k[i][c] * f[c];
    f[i] /= k[i][i];
  }
  return f;
}

/// Numbering and assembly of the model as it stands.
void Assemble(Model& model) {
  CalcElementStiffness(model);
  NumberEquations(model);
  AssembleStiffness(model);
  AssembleLoads(model);
  CompressStiffness(model.EquationCount, kRowCapacity, model.UpperCount, model.UpperColumn,
                    model.UpperValue, model.DiagonalValue, model.StiffnessMatrix, model.LoadVector,
                    model.SolutionVector);
}

SolveReport Solve(Model& m, double tolerance) {
  return SolveEquations(m.EquationCount, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn,
                        m.LowerColumn, m.UpperValue, m.LowerValue, m.DiagonalValue, m.LoadVector,
                        tolerance, m.SolutionVector, m.FactorUpper, m.FactorLower, m.FactorInvDiag,
                        m.ResidualVector, m.DirectionVector, m.PrecondVector, m.ProductVector,
                        m.TransposeFill);
}

TEST(Assembly, RowStoreHoldsTheDenseMatrix) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Model model = test::RandomPlate(seed);
    if (seed % 2 == 0) model.PoissonRatio = seed % 4 == 0 ? 0.0 : 1.0 / 3.0;  // exact zeros
    Assemble(model);
    const auto dense = DenseStiffness(model);
    for (int i = 1; i <= model.EquationCount; ++i) {
      const auto row = static_cast<std::size_t>(i);
      EXPECT_EQ(model.DiagonalValue(i), dense[row][row]);
      int slot = 0;
      for (int j = i + 1; j <= model.EquationCount; ++j) {
        const double value = dense[row][static_cast<std::size_t>(j)];
        if (value == 0.0) continue;
        ++slot;
        ASSERT_LE(slot, model.UpperCount(i));
        EXPECT_EQ(model.UpperColumn(slot, i), j);
        EXPECT_EQ(model.UpperValue(slot, i), value);
      }
      EXPECT_EQ(model.UpperCount(i), slot);
    }
  }
}

TEST(Solver, AgreesWithADenseFactorization) {
  int solved = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    Model model = test::RandomPlate(seed);
    Assemble(model);
    const auto dense = DenseStiffness(model);
    std::vector<double> load(static_cast<std::size_t>(model.EquationCount) + 1, 0.0);
    for (int p = 1; p <= model.EquationCount; ++p)
      load[static_cast<std::size_t>(p)] = model.LoadVector(p);
    const std::vector<double> exact = DenseSolve(dense, load);
    if (exact.empty()) continue;
    double largest = 0;
    for (double u : exact) largest = std::max(largest, std::fabs(u));
    const SolveReport report = Solve(model, 1e-11);
    EXPECT_TRUE(report.converged) << seed;
    EXPECT_LE(report.relativeResidual, 1e-11);
    EXPECT_EQ(report.equations, model.EquationCount);
    for (int p = 1; p <= model.EquationCount; ++p) {
      EXPECT_NEAR(model.SolutionVector(p), exact[static_cast<std::size_t>(p)], 1e-6 * largest)
          << seed;
    }
    ++solved;
  }
  EXPECT_GE(solved, 15);
}

/// Two unconnected equations: the factor is exact, so one iteration must do.
TEST(Solver, SmallPivotsAreReplacedByTheTolerance) {
  const struct {
    double diagonal, invDiag;
  } cases[] = {{2.0, 0.5}, {1e-6, 1e6},   {-1e-7, 1e6},
               {0.0, 1e6}, {-4.0, -0.25}, {1.1e-6, 1 / 1.1e-6}};
  for (const auto& c : cases) {
    Model model;
    model.EquationCount = 1;
    for (auto* vector : {&model.DiagonalValue, &model.FactorInvDiag}) vector->ReDim(0, 1);
    model.LowerCount.ReDim(0, 1);
    model.LowerColumn.ReDim({0, 9}, {0, 1});
    for (auto* values : {&model.LowerValue, &model.FactorLower}) values->ReDim({0, 9}, {0, 1});
    model.DiagonalValue(1) = c.diagonal;
    IncompleteCholesky(1, kRowCapacity, model.LowerCount, model.LowerColumn, model.LowerValue,
                       model.DiagonalValue, model.FactorLower, model.FactorInvDiag, 1e-6);
    EXPECT_EQ(model.FactorInvDiag(1), c.invDiag);
  }
}

TEST(Solver, AnUnheldPlateEndsWithoutConvergenceOrWithAnError) {
  Model model = test::Plate(3, 4);
  model.NodeLoad(5, 2) = 100;  // no equilibrium without supports
  Assemble(model);
  try {
    const SolveReport report = Solve(model, kSolverTolerance);
    EXPECT_FALSE(report.converged);
    EXPECT_EQ(report.iterations, model.EquationCount + 10);
  } catch (const RunTimeError& error) {
    EXPECT_EQ(error.Kind(), ErrorKind::kFloatingPoint);
  }
}

TEST(Solver, ColumnsOutsideTheSystemAreSubscriptErrors) {
  for (Integer column : {Integer{-1}, Integer{0}, Integer{9}}) {
    Model model = test::Plate(1, 1);
    model.NodeLoad(4, 1) = 1;
    Assemble(model);
    model.UpperColumn(1, 2) = column;
    EXPECT_THROW(Solve(model, kSolverTolerance), RunTimeError);
    model.UpperCount(2) = 10;
    EXPECT_THROW(Solve(model, kSolverTolerance), RunTimeError);
  }
}

}  // namespace
}  // namespace quillane
