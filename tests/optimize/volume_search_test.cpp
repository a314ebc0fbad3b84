// The way from a full rectangle to a wished volume, of a plate and of the shipped examples.
#include "optimize/volume_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "examples/recipes.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

bool Always(const Model&) { return true; }

Model AnalysedRectangle() {
  Model model = test::Cantilever(10, 20);
  model.Lambda = 0.2F;
  model.Epsilon = 5;
  StressAnalysis(model);
  return model;
}

TEST(VolumeSearch, ItsStagesDoneByHandGiveTheWishedVolumeAndTheSameLayout) {
  const Model start = AnalysedRectangle();
  Model byHand = start, found = start;
  VolumeSearch search(start, 0.5);
  while (const auto stage = search.Next(found, Always)) {
    found = search.Result();
    byHand.StressTarget = stage->stressTarget;
    EXPECT_TRUE(StressAnalysis(byHand).converged);
    EXPECT_EQ(stage->steps, 38);
    for (int step = 0; step < stage->steps; ++step) Optimization(byHand);
    EXPECT_TRUE(std::ranges::equal(byHand.CellState.Raw(), found.CellState.Raw()));
    EXPECT_TRUE(std::ranges::equal(byHand.Potential.Raw(), found.Potential.Raw()));
    EXPECT_TRUE(LostLoads(byHand).empty());
  }
  EXPECT_TRUE(search.Reached());
}

TEST(VolumeSearch, EndsWithTheLastWholePlateAndTellsWhatBroke) {
  Model model = AnalysedRectangle();
  VolumeSearch search(model, 0.05);
  while (search.Next(model, Always)) model = search.Result();
  EXPECT_FALSE(search.Reached());
  EXPECT_NE(search.LastOutcome(), StageOutcome::kGood);
  EXPECT_LT(model.Volume, 0.6 * AnalysedRectangle().Volume);
  EXPECT_TRUE(LostLoads(model).empty());
  EXPECT_TRUE(StressAnalysis(model).converged);

  VolumeSearch stopped(model, 0.5);
  EXPECT_FALSE(stopped.Next(model, [](const Model&) { return false; }).has_value());
  EXPECT_EQ(stopped.LastOutcome(), StageOutcome::kStopped);

  Model fixed = AnalysedRectangle();
  std::ranges::replace(fixed.CellState.Raw(), kCellDesign, kCellNonDesign);
  VolumeSearch nothingToTake(fixed, 0.5);
  while (nothingToTake.Next(fixed, Always)) fixed = nothingToTake.Result();
  EXPECT_FALSE(nothingToTake.Reached());
  EXPECT_EQ(nothingToTake.LastOutcome(), StageOutcome::kGood);

  for (int i = 1; i <= model.CellRowCount; ++i) model.CellState(i, 10) = kCellEmpty;
  VolumeSearch cutThrough(model, 0.5);
  EXPECT_FALSE(cutThrough.Next(model, Always).has_value());
  EXPECT_EQ(cutThrough.LastOutcome(), StageOutcome::kLoadsLost);
}

class Example : public testing::TestWithParam<std::string_view> {};

TEST_P(Example, IsWhatItsRecipeMakesAndComesDownToHalfItsVolumeWhole) {
  const std::string file = "/examples/" + std::string(GetParam()) + ".model";
  EXPECT_TRUE(test::ReadFile(QUILLANE_SOURCE_DIR + file) ==
              ModelFileText(ShippedExample(GetParam())));
  Model model = MakeExample(GetParam(), ExampleStart::kFullDomain);
  model.Lambda = 0.3F;  // fewer steps than the shipped one, the same way
  MarkActiveNodes(model);
  EXPECT_TRUE(StressAnalysis(model).converged);
  const double volume = model.Volume;
  VolumeSearch search(model, 0.5);
  while (search.Next(model, Always)) model = search.Result();
  EXPECT_TRUE(search.Reached());
  EXPECT_NEAR(model.Volume / volume, 0.5, VolumeSearch::kTolerance);
  EXPECT_TRUE(LostLoads(model).empty());
  EXPECT_TRUE(search.LastSolve().converged);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Example, testing::ValuesIn(ExampleNames()));

TEST(Examples, ARefinedOneIsTheSamePlateOfSmallerCells) {
  const Model coarse = MakeExample("l-bracket", ExampleStart::kSketch);
  const Model fine = MakeExample("l-bracket", ExampleStart::kSketch, 3);
  const auto sum = [](const auto& array) {
    double total = 0;
    for (const auto value : array.Raw()) total += static_cast<double>(value);
    return total;
  };
  EXPECT_EQ(sum(fine.CellState), 9 * sum(coarse.CellState));
  EXPECT_EQ(sum(fine.NodeLoad), sum(coarse.NodeLoad));
  EXPECT_EQ(sum(coarse.NodeFreedom), 2 * 17);
  EXPECT_EQ(sum(fine.NodeFreedom), 2 * 49) << "held along the edge, too";
}

}  // namespace
}  // namespace quillane
