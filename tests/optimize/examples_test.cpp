// The shipped examples: as their maker writes them, and carried down to half their volume.
#include <gtest/gtest.h>

#include <string>

#include "examples/recipes.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "optimize/volume_search.h"
#include "support/plates.h"

namespace quillane {
namespace {

class Example : public testing::TestWithParam<std::string_view> {};

TEST_P(Example, IsWhatItsRecipeMakesAndComesDownToHalfItsVolumeWhole) {
  const std::string name = std::string(GetParam()) + ".model";
  Model model = MakeExample(GetParam(), ExampleStart::kFullDomain);
  const auto shipped = std::filesystem::path(QUILLANE_SOURCE_DIR) / "examples" / name;
  EXPECT_TRUE(test::ReadFile(shipped) == ModelFileText(model));

  model.Lambda = 0.3F;  // fewer steps than the shipped one, the same way
  MarkActiveNodes(model);
  EXPECT_TRUE(StressAnalysis(model).converged);
  const double volume = model.Volume;
  VolumeSearch search(model, 0.5);
  while (search.Next(model, [](const Model&) { return true; })) model = search.Result();
  EXPECT_TRUE(search.Reached());
  EXPECT_NEAR(model.Volume / volume, 0.5, VolumeSearch::kTolerance);
  EXPECT_TRUE(LostLoads(model).empty());
  EXPECT_TRUE(search.LastSolve().converged);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Example, testing::ValuesIn(ExampleNames()));

TEST(Examples, ARefinedOneIsTheSamePlateOfSmallerCells) {
  const Model coarse = MakeExample("l-bracket", ExampleStart::kSketch);
  const Model fine = MakeExample("l-bracket", ExampleStart::kSketch, 3);
  EXPECT_EQ(fine.CellRowCount, 3 * coarse.CellRowCount);
  EXPECT_EQ(fine.DomainX2, coarse.DomainX2);
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
