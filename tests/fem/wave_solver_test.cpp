// The fast form of the solver against the plain procedures, with every instruction set.
#include "fem/wave_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <vector>

#include "fem/analysis.h"
#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "hwy/targets.h"
#include "model/run_time_error.h"
#include "support/plates.h"
#include "support/solver_forms.h"

namespace quillane {
namespace {

/// Plates of every kind: full ones of all proportions, holes and islands, rollers, nothing held.
std::vector<Model> Plates() {
  std::vector<Model> plates;
  const std::pair<int, int> kSizes[] = {{1, 1},   {1, 70}, {70, 1}, {3, 5},
                                        {15, 15}, {4, 47}, {17, 3}, {40, 20}};
  for (const auto& [rows, columns] : kSizes) {
    plates.push_back(test::Cantilever(rows, columns));
    plates.push_back(plates.back());
    plates.back().PoissonRatio = 1.0 / 3.0;  // one more coupling (almost) vanishes
  }
  for (unsigned seed = 1; seed <= 25; ++seed) plates.push_back(test::RandomPlate(seed));
  std::mt19937 random(7);
  for (int run = 0; run < 5; ++run) {
    Model model = test::Cantilever(33 + run, 50 - 9 * run);
    for (Integer& state : model.CellState.Raw()) {
      if (random() % 30 < static_cast<unsigned>(run)) state = kCellEmpty;
    }
    for (Integer& freedom : model.NodeFreedom.Raw()) {
      if (random() % 50 == 0) freedom = 1;
    }
    for (double& load : model.NodeLoad.Raw()) load = static_cast<double>(random() % 201) - 100.0;
    MarkActiveNodes(model);
    plates.push_back(model);
  }
  Model gap = test::Cantilever(20, 50);
  test::SetCells(gap, 5, 10, 16, 35, kCellEmpty);  // many waves of a strip without a quad
  for (int d = 1; d <= 2; ++d) gap.NodeFreedom(test::Node(gap, 21, 20), d) = 1;  // one wave
  plates.push_back(gap);
  Model islands = test::Cantilever(30, 50);
  test::SetCells(islands, 5, 10, 20, 17, kCellEmpty);
  test::SetCells(islands, 10, 12, 12, 14, kCellDesign);  // an island that nothing holds
  test::SetCells(islands, 1, 30, 30, 30, kCellCutOut);   // and a half that nothing holds
  plates.push_back(islands);
  Model free = test::Plate(12, 20);
  free.NodeLoad(test::Node(free, 5, 5), 1) = 10;
  free.NodeLoad(test::Node(free, 9, 9), 1) = -10;
  plates.push_back(free);
  free.NodeFreedom(1, 1) = free.NodeFreedom(1, 2) = 1;
  free.NodeLoad(test::Node(free, 13, 21), 2) = 3;  // turns about the pin
  plates.push_back(free);
  return plates;
}

/// Runs `body` once for every instruction set that this processor has.
void ForEachTarget(const std::function<void()>& body) {
#ifdef HWY_COMPILE_ONLY_STATIC
  body();
#else
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    body();
  }
  hwy::SetSupportedTargetsForTest(0);
#endif
}

TEST(WaveSolver, ProductFactorizationAndSweepsAreThoseOfThePlainProcedures) {
  std::mt19937 random(1);
  for (const Model& model : Plates()) {
    Model numbered = model;
    NumberComponents(numbered);
    SCOPED_TRACE(testing::Message() << model.CellRowCount << " x " << model.CellColumnCount);
    test::Vector x(static_cast<std::size_t>(numbered.EquationCount) + 1);
    for (double& value : x) value = std::uniform_real_distribution(-1.0, 1.0)(random);
    x[0] = 0.0;
    const test::SolverPieces plain = test::PlainPieces(model, x);
    ForEachTarget([&] {
      const auto waves = test::WavePieces(model, x);
      ASSERT_TRUE(waves.has_value());
      EXPECT_TRUE(plain.product == waves->product);
      EXPECT_TRUE(plain.preconditioned == waves->preconditioned);
    });
  }
}

/// The results of a solve.
struct Outcome {
  std::vector<double> solution;
  SolveReport report;
  std::optional<ErrorKind> error;
};

/// Solves by a procedure such as SolveStructure.
Outcome OutcomeOf(Model m, SolveReport (*solve)(Model&)) try {
  const SolveReport report = solve(m);
  const auto solution = m.SolutionVector.Raw();
  return {{solution.begin(), solution.end()}, report, {}};
} catch (const RunTimeError& error) {
  return {{}, {}, error.Kind()};
}

SolveReport SolvePlain(Model& m) {
  AssembleEquations(m);
  return SolveAssembledEquations(m, kSolverTolerance);
}

/// Returns whether the fast form declines the model.
bool IsLeftToPlain(Model m) {
  CalcElementStiffness(m);
  NumberComponents(m);
  AssembleLoads(m);
  m.SolutionVector.ReDim(0, m.EquationCount);
  return !SolveOnWaves(m, kSolverTolerance).has_value();
}

TEST(WaveSolver, WholeSolvesAgreeWithThePlainFormAndDoNotDependOnTheInstructionSet) {
  int agreed = 0;
  for (const Model& model : Plates()) {
    SCOPED_TRACE(testing::Message() << model.CellRowCount << " x " << model.CellColumnCount);
    const Outcome plain = OutcomeOf(model, SolvePlain);
    const Outcome first = OutcomeOf(model, SolveStructure);
    ASSERT_EQ(plain.error, first.error);
    ForEachTarget([&] {
      const Outcome waves = OutcomeOf(model, SolveStructure);
      EXPECT_TRUE(first.solution == waves.solution);
      EXPECT_EQ(first.report.iterations, waves.report.iterations);
      EXPECT_EQ(first.report.relativeResidual, waves.report.relativeResidual);
    });
    EXPECT_EQ(plain.error.has_value(), IsLeftToPlain(model));
    if (plain.error || !plain.report.converged || !first.report.converged) continue;
    const int difference = std::abs(plain.report.iterations - first.report.iterations);
    EXPECT_LE(difference, 1);
    double largest = 0.0;
    double furthest = 0.0;
    for (std::size_t i = 1; i < plain.solution.size(); ++i) {
      largest = std::max(largest, std::fabs(plain.solution[i]));
      furthest = std::max(furthest, std::fabs(plain.solution[i] - first.solution[i]));
    }
    EXPECT_LE(furthest, (difference == 0 ? 1e-9 : 1e-6) * largest);
    ++agreed;
  }
  EXPECT_GE(agreed, 25);
}

void ExpectLeftToPlain(const Model& model) {
  EXPECT_TRUE(IsLeftToPlain(model));
  const Outcome plain = OutcomeOf(model, SolvePlain);
  const Outcome chosen = OutcomeOf(model, SolveStructure);
  EXPECT_EQ(plain.error, chosen.error);
  EXPECT_TRUE(plain.solution == chosen.solution);
}

TEST(WaveSolver, LeavesForeignMeshesAndNumberingsToThePlainProcedures) {
  for (int k = 1; k <= 4; ++k) {
    Model bent = test::Cantilever(6, 6);
    bent.ElementNodes(8, k) = 30;
    ExpectLeftToPlain(bent);
  }
  Model stale = test::Cantilever(6, 6);
  NumberEquations(stale);
  stale.NodeFreedom(20, 1) = 1;  // keeps the number it had
  ExpectLeftToPlain(stale);
}

TEST(WaveSolver, AnUnchangedSystemIsNotSolvedAgainAndAnyOtherIs) {
  Model model = test::Cantilever(8, 9);
  const SolveReport first = SolveStructure(model);
  constexpr double kMark = 12345.0;  // what a solve would overwrite
  const auto isSolvedAfter = [&](const std::function<void(Model&)>& change) {
    Model changed = model;
    changed.SolutionVector(1) = kMark;
    change(changed);
    MarkActiveNodes(changed);
    const SolveReport report = SolveStructure(changed);
    EXPECT_EQ(report.equations, changed.EquationCount);
    return changed.SolutionVector(1) != kMark;
  };
  EXPECT_FALSE(isSolvedAfter([](Model&) {}));
  EXPECT_FALSE(isSolvedAfter([](Model& m) { m.CellState(3, 3) = kCellNonDesign; }));
  EXPECT_FALSE(isSolvedAfter([](Model& m) { m.NodeFreedom(1, 1) = 2; }));
  EXPECT_FALSE(isSolvedAfter([](Model& m) { m.StressTarget = 3; }));
  EXPECT_TRUE(isSolvedAfter([](Model& m) { m.CellState(3, 3) = kCellEmpty; }));
  EXPECT_TRUE(isSolvedAfter([](Model& m) { m.NodeFreedom(30, 2) = 1; }));
  EXPECT_TRUE(isSolvedAfter([](Model& m) { m.NodeLoad(30, 2) = 1; }));
  EXPECT_TRUE(isSolvedAfter([](Model& m) { m.Thickness = 2; }));
  EXPECT_TRUE(isSolvedAfter([](Model& m) { m.PoissonRatio = 0.2; }));
  EXPECT_TRUE(
      isSolvedAfter([](Model& m) { std::swap(m.ElementNodes(9, 1), m.ElementNodes(9, 2)); }));
  EXPECT_EQ(SolveStructure(model).iterations, first.iterations);

  model.NodeLoad(test::Node(model, 5, 10), 2) = 0.0;
  EXPECT_THROW(SolveStructure(model), RunTimeError);
  EXPECT_THROW(SolveStructure(model), RunTimeError) << "a failed solve is not reused";
}

}  // namespace
}  // namespace quillane
