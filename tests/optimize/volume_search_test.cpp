// The search for a wished volume, from a full rectangle and from the examples.
#include "optimize/volume_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "examples/recipes.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "fem/stress.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "optimize/potential.h"
#include "optimize/vote.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// Returns the plate after an analysis; by default the cells at loads become non-design cells.
Model Analysed(Model model, bool keepLoads = true) {
  if (keepLoads) KeepLoadedCells(model);
  MarkActiveNodes(model);
  EXPECT_TRUE(StressAnalysis(model).converged);
  return model;
}

/// Held in x along its left edge and in y at the lower right node, loaded at the upper left one.
Model HalfBeam(int rows, int columns) {
  Model model = test::Plate(rows, columns);
  for (int i = 1; i <= rows + 1; ++i) model.NodeFreedom(test::Node(model, i, 1), 1) = 1;
  model.NodeFreedom(test::Node(model, 1, columns + 1), 2) = 1;
  model.NodeLoad(test::Node(model, rows + 1, 1), 2) = -1000;
  model.CellState(1, columns) = model.CellState(rows, 1) = kCellNonDesign;
  return Analysed(model);
}

/// With its left column and the cells at the load non-design.
Model Cantilever(int rows, int columns) {
  Model model = test::Cantilever(rows, columns);
  test::SetCells(model, 1, 1, rows, 1, kCellNonDesign);
  return Analysed(model);
}

/// Returns a goal or options: this share of the volume of `full`.
template <class Goal>
Goal For(const Model& full, double share) {
  Goal goal;
  goal.share = share;
  goal.fullVolume = full.Volume;
  return goal;
}

SearchResult Found(const Model& start, double share, int jobs = 1,
                   std::optional<Single> lambda = {}, std::optional<Integer> epsilon = {}) {
  SearchOptions options = For<SearchOptions>(start, share);
  options.jobs = jobs;
  options.lambda = lambda;
  options.epsilon = epsilon;
  return SearchVolume(start, options, {});
}

bool SameLayout(const Model& one, const Model& other) {
  return std::ranges::equal(one.CellState.Raw(), other.CellState.Raw()) &&
         std::ranges::equal(one.Potential.Raw(), other.Potential.Raw());
}

/// Runs the stages as a user would in the window.
Model ByHand(Model model, const std::vector<KeptStage>& stages) {
  for (const KeptStage& kept : stages) {
    const Array2<Integer> before = model.CellState;
    Prescribe(kept.stage, model);
    StressAnalysis(model);
    for (int step = 0; step < kept.stage.steps; ++step) Optimization(model);
    if (model.Lambda == 1) {
      EXPECT_FALSE(std::ranges::equal(before.Raw(), model.CellState.Raw()))
          << "a vote without effect";
    }
    EXPECT_EQ(model.Volume, kept.volume);
    EXPECT_EQ(Compliance(model), kept.compliance);
  }
  return model;
}

TEST(VolumeSearch, ItsStagesDoneByHandGiveTheSamePlateWhateverTheThreads) {
  const Model start = Analysed(test::Cantilever(10, 20));
  const SearchResult one = Found(start, 0.5), four = Found(start, 0.5, 4);
  const Attempt& best = one.Best();
  ASSERT_TRUE(best.reached);
  const Model byHand = ByHand(start, best.stages);
  EXPECT_TRUE(SameLayout(byHand, best.model));
  EXPECT_EQ(byHand.StepCount, best.model.StepCount);
  EXPECT_EQ(byHand.MaxStress, best.maxStress);
  EXPECT_EQ(byHand.AvgStress, best.meanStress);
  EXPECT_NEAR(byHand.Volume / start.Volume, 0.5, kVolumeTolerance);
  EXPECT_TRUE(SameLayout(best.model, four.Best().model));
  EXPECT_EQ(one.best, four.best);
  ASSERT_EQ(one.attempts.size(), four.attempts.size());
  for (std::size_t at = 0; at < one.attempts.size(); ++at) {
    EXPECT_EQ(one.attempts[at].compliance, four.attempts[at].compliance);
    EXPECT_EQ(one.attempts[at].steps, four.attempts[at].steps);
  }
  // A symmetric plate keeps its symmetry.
  for (int i = 1; i <= 10; ++i) {
    for (int j = 1; j <= 20; ++j) {
      EXPECT_EQ(best.model.CellState(i, j), best.model.CellState(11 - i, j)) << i << ", " << j;
    }
  }
}

TEST(VolumeSearch, ErodesASlenderPlateBySingleStepsThatCanBeDoneByHand) {
  const Model start = HalfBeam(8, 20);
  SearchGoal goal = For<SearchGoal>(start, 0.3);
  goal.goOn = [] { return true; };
  SearchWay way;
  const Attempt without = TryWay(start, way, goal);
  way.erodes = true;
  const Attempt with = TryWay(start, way, goal);
  EXPECT_LT(with.volume, without.volume);
  EXPECT_GT(std::ranges::count_if(with.stages,
                                  [](const KeptStage& kept) { return kept.stage.lambda != 1; }),
            0);
  EXPECT_TRUE(SameLayout(ByHand(start, with.stages), with.model));
}

TEST(VolumeSearch, EndsOnPlatesThatOnceHadItGoOnForEver) {
  const struct {
    const char* name;
    Model start;
    double share;
    bool reachable;
  } cases[] = {{"half beam 48 x 16", HalfBeam(16, 48), 0.5, true},
               {"cantilever 30 x 30", Cantilever(30, 30), 0.5, true},
               {"cantilever 48 x 16", Cantilever(16, 48), 0.7, true},
               {"2 x 1 cells", Analysed(test::Cantilever(1, 2), false), 0.98, true},
               {"too light", Cantilever(8, 16), 0.12, false}};
  for (const auto& c : cases) {
    const SearchResult result = Found(c.start, c.share);
    const Attempt& best = result.Best();
    const double share = best.model.Volume / c.start.Volume;
    EXPECT_LE(static_cast<int>(result.attempts.size()), kMostAttempts) << c.name;
    for (const Attempt& attempt : result.attempts) EXPECT_LE(attempt.steps, kMostVotes) << c.name;
    EXPECT_EQ(best.reached, std::abs(share - c.share) <= kVolumeTolerance) << c.name << share;
    if (c.start.ElementCount > 2) {
      EXPECT_EQ(best.reached, c.reachable) << c.name << ": " << share;
    }
    EXPECT_TRUE(LostLoads(best.model).empty()) << c.name;
    EXPECT_TRUE(best.model.Solved.report->converged) << c.name;
    if (best.reached) {
      const double worth = best.compliance * best.model.Volume;
      EXPECT_LT(worth, 1.5 * Compliance(c.start) * c.start.Volume) << c.name << ": too compliant";
    }
  }
}

TEST(VolumeSearch, KeepsToTheLambdaAndEpsilonThatAreGiven) {
  const Model start = Cantilever(10, 20);
  const SearchResult result = Found(start, 0.7, 1, 0.3F, Integer{5});
  EXPECT_TRUE(result.Best().reached);
  for (const Attempt& attempt : result.attempts) {
    for (const KeptStage& kept : attempt.stages) {
      EXPECT_EQ(kept.stage.lambda, 0.3F);
      EXPECT_EQ(kept.stage.epsilon, 5);
      EXPECT_EQ(kept.stage.steps, VoteSteps(0.3F, 5));
    }
  }
  EXPECT_TRUE(SameLayout(ByHand(start, result.Best().stages), result.Best().model));
}

TEST(VolumeSearch, StopsWithTheLastLayoutThatWasKept) {
  const Model start = Cantilever(10, 20);
  SearchWatch watch;
  int steps = 0;
  watch.goOn = [&steps] { return ++steps < 9; };
  const SearchResult result = SearchVolume(start, For<SearchOptions>(start, 0.5), watch);
  EXPECT_FALSE(result.Best().reached);
  EXPECT_EQ(result.attempts[0].end, SearchEnd::kStopped);
  EXPECT_LT(result.Best().model.Volume, start.Volume);
  EXPECT_TRUE(SameLayout(ByHand(start, result.Best().stages), result.Best().model));
}

TEST(VolumeSearch, TakesAPlateAtTheWishAsReachedAndALighterOneAsTooLight) {
  const Model start = Cantilever(10, 20);
  const SearchResult first = Found(start, 0.5);
  const SearchResult again = SearchVolume(first.Best().model, For<SearchOptions>(start, 0.5), {});
  EXPECT_TRUE(again.Best().reached);
  EXPECT_LE(again.Best().compliance, first.Best().compliance);
  const SearchResult lighter = SearchVolume(first.Best().model, For<SearchOptions>(start, 0.7), {});
  EXPECT_FALSE(lighter.Best().reached);
  EXPECT_EQ(lighter.Best().end, SearchEnd::kTooLight);
}

TEST(Vote, TakesEveryCellThatItsTargetDoesNotFeedAndNoOther) {
  for (const Single lambda : {1.0F, 0.5F, 0.1F}) {
    for (const Integer epsilon : std::initializer_list<Integer>{1, 3, 5, 7, 9}) {
      Model model = test::Plate(3, 3);
      model.Lambda = lambda, model.Epsilon = epsilon, model.StressTarget = 100;
      InitPotential(model);
      model.CellStress(2, 2) = model.CellStress(1, 2) = model.CellStress(2, 1) = 200;
      const auto isFull = [&model] { return model.CellState(3, 3) == kCellDesign; };
      const int steps = VoteSteps(lambda, epsilon);
      for (int step = 0; step < steps; ++step) UpdatePotential(model);
      // Fed positions: 3 of the middle cell, 2 of each neighbour of two of the stressed ones.
      EXPECT_EQ(model.CellState(2, 2) == kCellDesign, epsilon <= 5) << lambda << ", " << epsilon;
      EXPECT_EQ(model.CellState(1, 1) == kCellDesign, epsilon <= 3) << lambda << ", " << epsilon;
      EXPECT_FALSE(isFull()) << lambda << ", " << epsilon;
      // An empty cell that is fed enough is filled after as many steps.
      std::ranges::fill(model.CellStress.Raw(), 0.0);
      model.CellStress(3, 2) = model.CellStress(2, 3) = 200;
      for (int step = 0; step < steps; ++step) UpdatePotential(model);
      EXPECT_EQ(isFull(), epsilon <= 3) << lambda << ", " << epsilon;
    }
  }
}

TEST(Vote, ItsTargetLeavesAsManyCellsAsWishedAndBothOrNoneOfTwins) {
  Model model = Analysed(test::Cantilever(12, 24));
  model.CellState(6, 12) = model.CellState(7, 12) = kCellEmpty;  // with a remaining potential
  model.Potential(6, 12) = model.Potential(7, 12) = 4;
  for (int i = 1; i <= 6; ++i) {
    for (int j = 1; j <= 24; ++j) {
      const double decimal = std::round(100 * model.CellStress(i, j)) / 100;  // as targets are
      model.CellStress(i, j) = decimal;
      model.CellStress(13 - i, j) = decimal * (1 + 3e-6);
    }
  }
  const std::pair<Single, Integer> steps[] = {{1, 3},     {1, 5},     {1, 7},
                                              {0.45F, 7}, {0.45F, 9}, {0.7F, 5}};
  for (const auto& [lambda, epsilon] : steps) {
    for (const int cells : {280, 250, 200, 120}) {
      Model next = model;
      next.Lambda = lambda;
      next.Epsilon = epsilon;
      next.StressTarget = TargetThatKeeps(model, lambda, epsilon, cells);
      UpdatePotential(next);
      const auto left =
          std::ranges::count_if(next.CellState.Raw(), [](Integer s) { return s > 0; });
      EXPECT_LE(left, cells) << lambda << ", " << epsilon;
      EXPECT_GE(left, cells - 6) << lambda << ", " << epsilon << ": symmetric cells leave together";
      for (int i = 1; i <= 6; ++i) {
        for (int j = 1; j <= 24; ++j) {
          EXPECT_EQ(next.CellState(i, j), next.CellState(13 - i, j)) << i << ", " << j;
        }
      }
    }
  }
}

class Example : public testing::TestWithParam<std::string_view> {};

TEST_P(Example, IsWhatItsRecipeMakesAndComesDownToHalfItsVolumeWhole) {
  const std::string file = "/examples/" + std::string(GetParam()) + ".model";
  EXPECT_TRUE(test::ReadFile(QUILLANE_SOURCE_DIR + file) ==
              ModelFileText(ShippedExample(GetParam())));
  const Model start = Analysed(MakeExample(GetParam(), ExampleStart::kFullDomain));
  SearchGoal goal = For<SearchGoal>(start, 0.5);
  goal.goOn = [] { return true; };
  SearchWay coarse;  // a search also tries finer ones
  coarse.pace = 0.06;
  const Attempt best = TryWay(start, coarse, goal);
  EXPECT_TRUE(best.reached);
  EXPECT_NEAR(best.model.Volume / start.Volume, 0.5, kVolumeTolerance);
  EXPECT_TRUE(LostLoads(best.model).empty());
  EXPECT_TRUE(best.model.Solved.report->converged);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Example, testing::ValuesIn(ExampleNames()));

}  // namespace
}  // namespace quillane
