// The solver against the square matrix, at its limits, and what stops an analysis.
#include "fem/solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "fem/analysis.h"
#include "fem/mesh.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

using Square = Array2<Double>;

/// The plain square matrix of a model, assembled element by element into n x n numbers.
Square DenseStiffness(const Model& model) {
  Square k("k");
  k.ReDim({0, model.EquationCount}, {0, model.EquationCount});
  ForEachPresentCell(model, [&](int, int, int e) {
    for (int a = 1; a <= 8; ++a) {
      for (int b = 1; b <= 8; ++b) {
        k(model.ElementDofs(e, a), model.ElementDofs(e, b)) += model.ElementStiffness[a][b];
      }
    }
  });
  return k;
}

/// The row store must hold the non-zero numbers right of the diagonal, in order, and no others.
void ExpectStored(const Model& model, const Square& dense) {
  for (int i = 1; i <= model.EquationCount; ++i) {
    EXPECT_EQ(model.DiagonalValue(i), dense(i, i));
    int slot = 0;
    for (int j = i + 1; j <= model.EquationCount; ++j) {
      if (dense(i, j) == 0.0) continue;
      ASSERT_LE(++slot, model.UpperCount(i));
      EXPECT_EQ(model.UpperColumn(slot, i), j);
      EXPECT_EQ(model.UpperValue(slot, i), dense(i, j));
    }
    EXPECT_EQ(model.UpperCount(i), slot);
  }
}

TEST(Solver, StoreAndSolutionAgreeWithTheSquareMatrix) {
  int solved = 0;
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    Model model = test::RandomPlate(seed);
    if (seed % 2 == 0) model.PoissonRatio = seed % 4 == 0 ? 0.0 : 1.0 / 3.0;  // exact zeros
    AssembleEquations(model);
    const Square dense = DenseStiffness(model);
    ExpectStored(model, dense);
    const SolveReport report = SolveAssembledEquations(model, 1e-11);
    if (!report.converged) continue;
    EXPECT_LE(report.relativeResidual, 1e-11);
    EXPECT_EQ(report.equations, model.EquationCount);
    for (int p = 1; p <= model.EquationCount; ++p) {
      double force = 0, terms = 0;
      for (int q = 1; q <= model.EquationCount; ++q) {
        force += dense(p, q) * model.SolutionVector(q);
        terms += std::fabs(dense(p, q) * model.SolutionVector(q));
      }
      EXPECT_NEAR(force, model.LoadVector(p), 1e-9 * terms);
    }
    ++solved;
  }
  EXPECT_GE(solved, 30);
}

TEST(Solver, RefusesAStoreThatLeavesItsSlotsOrEquations) {
  const struct {
    Integer count, column;
    const char* reason;
  } cases[] = {
      {10, 1, "tenth slot"}, {-1, 1, "negative count"}, {1, 0, "equation 0"}, {1, 9, "past n"}};
  for (const auto& c : cases) {
    Model m = test::Cantilever(1, 1);
    AssembleEquations(m);
    m.UpperCount(1) = c.count;
    m.UpperColumn(1, 1) = c.column;
    EXPECT_THROW(SolveAssembledEquations(m, 1e-6), RunTimeError) << c.reason;
  }
}

void LoadTip(Model& model, double force) { model.NodeLoad(test::Node(model, 3, 7), 2) = force; }

TEST(Failures, EachStopsAtItsStatementAndNamesItsCause) {
  using enum ErrorCause;
  const struct {
    const char* what;  // part of the message
    ErrorCause cause;
    void (*damage)(Model&);
  } cases[] = {
      {"step size", kNoLoad, [](Model& m) { LoadTip(m, 0); }},
      {"step size", kUnsolvable, [](Model& m) { LoadTip(m, 1e-200); }},  // its square is zero
      {"step size", kIdleLoads,
       [](Model& m) { LoadTip(m, 0), m.NodeLoad(1, 2) = 5; }},  // at the wall
      {"step size", kNoMaterial,
       [](Model& m) { std::ranges::fill(m.CellState.Raw(), kCellEmpty); }},
      {"step size", kAllHeld, [](Model& m) { std::ranges::fill(m.NodeFreedom.Raw(), kTrue); }},
      {"step size", kNoStiffness, [](Model& m) { m.Thickness = 0; }},
      {"", kNotHeld,
       [](Model& m) {
         m.CellState(1, 1) = kCellEmpty;
         test::SetCells(m, 2, 3, 4, 3, kCellEmpty);
         for (int k = 1; k <= m.NodeCount; ++k) m.NodeFreedom(k, 2) = 0;
         LoadTip(m, 1e200);
       }},
      {"plate stiffness", kPoissonRatio, [](Model& m) { m.PoissonRatio = 1; }},
      {"plate stiffness", kPoissonRatio, [](Model& m) { m.PoissonRatio = -1; }},
      {"plate stiffness", kUnsolvable,
       [](Model& m) { m.YoungModulus = 1.7e308, m.PoissonRatio = 0.9; }},
      {"stiffness matrix", kUnsolvable, [](Model& m) { m.YoungModulus = 1.2e308; }},
      {"preconditioned residual", kUnsolvable, [](Model& m) { LoadTip(m, 1e200); }},
      {"stress", kNone, [](Model& m) { m.ElementSize = 0; }},
      {"ElementNodes(24, 1)", kNone,
       [](Model& m) {
         m.ElementNodes.ReDim({0, 23}, {1, 4});
       }},
      {"NodeActive(-7)", kNone, [](Model& m) { m.ElementNodes(3, 2) = -7; }},
  };
  for (const auto& c : cases) {
    Model model = test::Cantilever(4, 6);
    try {
      c.damage(model);
      MarkActiveNodes(model);
      AnalyseStructure(model);
      ADD_FAILURE() << "analysed: " << c.what;
    } catch (const RunTimeError& error) {
      const bool subscript = std::string(c.what).ends_with(')');
      EXPECT_EQ(error.Kind(), subscript ? ErrorKind::kSubscript : ErrorKind::kFloatingPoint);
      EXPECT_NE(std::string(error.what()).find(c.what), std::string::npos) << error.what();
      EXPECT_EQ(error.Cause(), c.cause) << error.what();
    }
  }
}

TEST(Solver, AnUnheldPlateDoesNotPassAsSolved) {
  const auto solveHeld = [](const auto& isHeld) {
    Model model = test::Cantilever(20, 40);
    for (int n = 1; n <= model.NodeCount; ++n) {
      for (int d = 1; d <= 2; ++d) {
        if (!isHeld(n, d)) model.NodeFreedom(n, d) = 0;
      }
    }
    return SolveStructure(model);
  };
  EXPECT_FALSE(solveHeld([](int, int) { return false; }).converged);
  EXPECT_FALSE(solveHeld([](int n, int) { return n == 1; }).converged);
  EXPECT_FALSE(solveHeld([](int, int d) { return d == 1; }).converged);
  const SolveReport held = solveHeld([](int, int) { return true; });
  EXPECT_TRUE(held.converged);
  EXPECT_NEAR(held.trueResidual, held.relativeResidual, 1e-8);
}

TEST(Solver, TheLastIterateStandsWhereTheLimitEndsTheSolve) {
  Model beam = test::Cantilever(1, 1000);
  const SolveReport report = SolveStructure(beam);
  EXPECT_FALSE(report.converged);
  EXPECT_EQ(report.iterations, report.equations + 10);
  EXPECT_NEAR(report.trueResidual, report.relativeResidual, 1e-3 * report.relativeResidual);
}

}  // namespace
}  // namespace quillane
