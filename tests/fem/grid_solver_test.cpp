// The grid solver against the plain procedures, bit for bit, at every vector length.
#include "fem/grid_solver.h"

#include <gtest/gtest.h>

#include <bit>
#include <functional>
#include <optional>
#include <random>
#include <vector>

#include "fem/analysis.h"
#include "fem/element_stiffness.h"
#include "fem/grid_targets.h"
#include "fem/mesh.h"
#include "hwy/targets.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// What a solve leaves behind, numbers as bits.
struct Outcome {
  std::vector<std::uint64_t> solution;
  int iterations = 0;
  std::uint64_t residual = 0;
  bool converged = false;
  std::optional<ErrorKind> error;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome Record(Model& model, const std::function<SolveReport()>& solve) {
  Outcome outcome;
  try {
    const SolveReport report = solve();
    outcome.iterations = report.iterations;
    outcome.residual = std::bit_cast<std::uint64_t>(report.relativeResidual);
    outcome.converged = report.converged;
    for (const double x : model.SolutionVector.Raw()) {
      outcome.solution.push_back(std::bit_cast<std::uint64_t>(x));
    }
  } catch (const RunTimeError& error) {
    outcome.error = error.Kind();
  }
  return outcome;
}

Outcome SolvePlain(Model m) {
  return Record(m, [&m] {
    AssembleEquations(m);
    return SolveAssembledEquations(m, kSolverTolerance);
  });
}

/// The chain as the program runs it, the stresses left out.
Outcome SolveChosen(Model m) {
  return Record(m, [&m] { return SolveStructure(m); });
}

/// The grid solver alone; empty where it leaves the model to the plain procedures.
std::optional<Outcome> SolveGrid(Model m) {
  CalcElementStiffness(m);
  NumberComponents(m);
  const std::optional<SolveReport> report = SolveOnGrid(m, kSolverTolerance);
  if (!report) return std::nullopt;
  return Record(m, [&report] { return *report; });
}

/// Runs `body` once for every vector length that this processor has.
void ForEachLength(const std::function<void()>& body) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::SetSupportedTargetsForTest(target);
    body();
  }
  hwy::SetSupportedTargetsForTest(0);
}

void ExpectSameBits(const Model& model) {
  const Outcome plain = SolvePlain(model);
  ForEachLength([&] {
    const std::optional<Outcome> grid = SolveGrid(model);
    ASSERT_TRUE(grid.has_value());
    EXPECT_TRUE(plain == *grid);
  });
}

void ExpectLeftToPlain(const Model& model) {
  EXPECT_FALSE(SolveGrid(model).has_value());
  EXPECT_TRUE(SolvePlain(model) == SolveChosen(model));
}

void Mark(Model& model, int row1, int column1, int row2, int column2, Integer state) {
  for (int i = row1; i <= row2; ++i) {
    for (int j = column1; j <= column2; ++j) model.CellState(i, j) = state;
  }
  MarkActiveNodes(model);
}

TEST(GridSolver, FullPlatesOfEveryProportion) {
  const struct {
    int rows, columns;
  } kSizes[] = {{1, 1}, {1, 70}, {70, 1}, {3, 5}, {15, 15}, {16, 47}, {17, 48}, {33, 49}, {40, 20}};
  for (const auto& size : kSizes) {
    SCOPED_TRACE(testing::Message() << size.rows << " x " << size.columns);
    Model model = test::Cantilever(size.rows, size.columns);
    ExpectSameBits(model);
    model.PoissonRatio = 1.0 / 3.0;  // one more coupling vanishes, or almost
    ExpectSameBits(model);
  }
}

TEST(GridSolver, HolesIslandsAndMixedSupports) {
  Model model = test::Cantilever(30, 50);
  Mark(model, 5, 10, 20, 17, kCellEmpty);
  Mark(model, 10, 12, 12, 14, kCellDesign);  // an island that nothing holds
  Mark(model, 1, 30, 30, 30, kCellCutOut);   // and a half that nothing holds
  Mark(model, 15, 30, 15, 30, kCellNonDesign);
  for (int row = 1; row <= 31; row += 2) {
    model.NodeFreedom(test::Node(model, row, 51), 1) = 1;
    model.NodeFreedom(test::Node(model, row, 40), 2) = 1;
  }
  ExpectSameBits(model);
}

TEST(GridSolver, RandomLayouts) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE(seed);
    ExpectSameBits(test::RandomPlate(seed));
  }
}

TEST(GridSolver, RandomLayoutsOfManyRows) {
  std::mt19937 random(7);
  for (int run = 0; run < 5; ++run) {
    SCOPED_TRACE(run);
    Model model = test::Cantilever(33 + run, 50 - 9 * run);
    for (Integer& state : model.CellState.Raw()) {
      if (random() % 30 < static_cast<unsigned>(run)) state = kCellEmpty;
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
  Model free = test::Plate(12, 20);
  free.NodeLoad(test::Node(free, 5, 5), 1) = 10;
  free.NodeLoad(test::Node(free, 9, 9), 1) = -10;
  ExpectSameBits(free);
  Model pinned = free;
  pinned.NodeFreedom(1, 1) = pinned.NodeFreedom(1, 2) = 1;
  pinned.NodeLoad(test::Node(pinned, 13, 21), 2) = 3;  // turns about the pin
  ExpectSameBits(pinned);
}

TEST(GridSolver, LeavesFailuresToThePlainProcedures) {
  ExpectLeftToPlain(test::Cantilever(6, 6, 0.0));  // no load
  Model held = test::Cantilever(6, 6);
  for (Integer& freedom : held.NodeFreedom.Raw()) freedom = 1;
  ExpectLeftToPlain(held);  // no equation
  Model heavy = test::Cantilever(6, 6, 1e200);
  ExpectLeftToPlain(heavy);  // the squared load overflows
  Model stiff = test::Cantilever(6, 6);
  stiff.YoungModulus = 1.2e308;  // four elements overflow
  ExpectLeftToPlain(stiff);
}

TEST(GridSolver, LeavesForeignMeshesAndNumberingsToThePlainProcedures) {
  Model turned = test::Cantilever(6, 6);
  for (int k = 1; k < 4; ++k) {
    std::swap(turned.ElementNodes(8, k), turned.ElementNodes(8, k + 1));
  }
  ExpectLeftToPlain(turned);
  Model stale = test::Cantilever(6, 6);
  NumberEquations(stale);
  stale.NodeFreedom(20, 1) = 1;  // keeps the number it had
  ExpectLeftToPlain(stale);
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
