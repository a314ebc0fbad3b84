// The grid solver against the plain procedures, bit for bit, at every vector length.
#include "fem/grid_solver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <random>
#include <vector>

#include "fem/analysis.h"
#include "fem/grid_targets.h"
#include "fem/plain_solve.h"
#include "hwy/targets.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// What a solve leaves behind: numbers as bits, or the kind of its error.
using Outcome = std::vector<std::uint64_t>;

Outcome Record(Model& model, const std::function<SolveReport()>& solve) {
  Outcome outcome;
  try {
    const SolveReport report = solve();
    outcome = {static_cast<std::uint64_t>(report.iterations), report.converged ? 1U : 0U,
               std::bit_cast<std::uint64_t>(report.relativeResidual)};
    for (const double x : model.SolutionVector.Raw()) {
      outcome.push_back(std::bit_cast<std::uint64_t>(x));
    }
  } catch (const RunTimeError& error) {
    outcome = {static_cast<std::uint64_t>(error.Kind())};
  }
  return outcome;
}

Outcome SolvePlain(Model m) {
  return Record(m, [&m] {
    test::Assemble(m);
    return test::SolveAssembled(m, kSolverTolerance);
  });
}

/// The chain as the program runs it, the stresses left out.
Outcome SolveChosen(Model m) {
  return Record(m, [&m] { return SolveStructure(m); });
}

/// True if the grid solver itself, and not the plain procedures in its place, gives the result.
bool ServedByGrid(Model m) {
  CalcElementStiffness(m);
  NumberComponents(m);
  return SolveOnGrid(m, kSolverTolerance).has_value();
}

/// Solves once for every vector length that this processor has.
void ExpectSameBits(const Model& model, bool servedByGrid = true) {
  const Outcome plain = SolvePlain(model);
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    EXPECT_TRUE(plain == SolveChosen(model));
    EXPECT_EQ(servedByGrid, ServedByGrid(model));
  }
  hwy::SetSupportedTargetsForTest(0);
}

TEST(GridSolver, FullPlatesOfEveryProportion) {
  const int sizes[][2] = {{1, 1},   {1, 70},  {70, 1},  {3, 5},  {15, 15},
                          {16, 47}, {17, 48}, {33, 49}, {40, 20}};
  for (const auto& [rows, columns] : sizes) {
    SCOPED_TRACE(testing::Message() << rows << " x " << columns);
    Model model = test::Cantilever(rows, columns);
    ExpectSameBits(model);
    model.PoissonRatio = 1.0 / 3.0;  // one more coupling vanishes, or almost
    ExpectSameBits(model);
  }
}

TEST(GridSolver, RandomLayouts) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    ExpectSameBits(test::RandomPlate(seed));
  }
  std::mt19937 random(7);
  for (int run = 0; run < 6; ++run) {  // of many rows
    SCOPED_TRACE(run);
    Model model = test::Cantilever(45 + run, 60 - 9 * run);
    for (Integer& state : model.CellState.Raw()) {
      if (random() % 8 < static_cast<unsigned>(run)) state = kCellEmpty;
    }
    for (Integer& freedom : model.NodeFreedom.Raw()) {
      if (random() % 50 == 0) freedom = 1;
    }
    for (double& load : model.NodeLoad.Raw()) load = static_cast<double>(random() % 201) - 100.0;
    MarkActiveNodes(model);
    ExpectSameBits(model);
  }
}

TEST(GridSolver, UnsupportedAndSingular) {
  Model model = test::Plate(12, 20);
  model.NodeLoad(test::Node(model, 5, 5), 1) = 10;
  model.NodeLoad(test::Node(model, 9, 9), 1) = -10;
  ExpectSameBits(model);
  model.NodeFreedom(1, 1) = model.NodeFreedom(1, 2) = 1;
  model.NodeLoad(test::Node(model, 13, 21), 2) = 3;  // turns about the pin
  ExpectSameBits(model);
}

TEST(GridSolver, LeavesFailuresAndForeignMeshesToThePlainProcedures) {
  void (*const damages[])(Model&) = {
      [](Model& m) { std::ranges::fill(m.NodeLoad.Raw(), 0); },
      [](Model& m) { std::ranges::fill(m.NodeFreedom.Raw(), kTrue); },
      [](Model& m) { m.NodeLoad(test::Node(m, 4, 7), 2) = 1e200; },  // its square overflows
      [](Model& m) { m.YoungModulus = 1e308; },
      [](Model& m) {  // the same corners, counted from another one
        for (int k = 1; k < 4; ++k) std::swap(m.ElementNodes(8, k), m.ElementNodes(8, k + 1));
      },
      [](Model& m) {
        NumberEquations(m);
        m.NodeFreedom(20, 1) = 1;  // keeps the number it had
      }};
  for (const auto& damage : damages) {
    SCOPED_TRACE(&damage - damages);
    Model model = test::Cantilever(6, 6);
    damage(model);
    ExpectSameBits(model, false);
  }
}

TEST(GridSolver, ReusesItsSpaceForAnyOrderOfSizes) {
  Model model = test::Cantilever(60, 30);
  Model small = test::Cantilever(8, 9);
  (void)SolveStructure(model);
  small.SolverSpace = model.SolverSpace;  // full of the other solve's numbers
  EXPECT_TRUE(SolvePlain(small) == SolveChosen(small));
}

}  // namespace
}  // namespace quillane
