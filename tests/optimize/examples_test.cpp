// The shipped examples: written by their maker, and carried by one connected plate to the end.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

constexpr int kSteps = 150;  // as docs/examples.md states them

/// Empties the cell and all with material that it reaches over common edges.
void TakeAway(Array2<Integer>& cells, int i, int j) {
  const bool inside = cells.First().Contains(i) && cells.Second().Contains(j);
  if (!inside || cells(i, j) <= 0) return;
  cells(i, j) = kCellEmpty;
  for (const int step : {-1, 1}) {
    TakeAway(cells, i + step, j);
    TakeAway(cells, i, j + step);
  }
}

/// Whether loads and supports, all on non-design cells, hang together through material.
bool NonDesignCellsConnect(const Model& model) {
  Array2<Integer> rest = model.CellState;
  const auto first = std::ranges::find(rest.Raw(), kCellNonDesign) - rest.Raw().begin();
  const auto rows = static_cast<int>(rest.First().Size());
  TakeAway(rest, static_cast<int>(first) % rows + rest.First().lower,
           static_cast<int>(first) / rows + rest.Second().lower);
  return std::ranges::count(rest.Raw(), kCellNonDesign) == 0;
}

class Example : public testing::TestWithParam<const char*> {};

TEST_P(Example, IsWhatItsMakerWritesAndStaysConnectedWhileHalfItsVolumeGoes) {
  const test::ScratchFolder scratch;
  const std::string command = "\"" QUILLANE_MAKE_EXAMPLES "\" \"" + scratch.Path().string() + "\"";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const std::string name = GetParam() + std::string(".model");
  const auto shipped = std::filesystem::path(QUILLANE_SOURCE_DIR) / "examples" / name;
  EXPECT_TRUE(test::ReadFile(shipped) == test::ReadFile(scratch / name));

  Model model;
  OpenModelFile(model, shipped);
  History history;
  MarkActiveNodes(model);
  EXPECT_TRUE(StressAnalysis(model).converged);
  const double volume = model.Volume;
  for (int step = 1; step <= kSteps; ++step) {
    ASSERT_TRUE(Optimization(model, history).converged) << "step " << step;
    ASSERT_TRUE(NonDesignCellsConnect(model)) << "step " << step;
  }
  EXPECT_NEAR(model.Volume / volume, 0.525, 0.04);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Example,
                         testing::Values("cantilever", "half-mbb-beam", "bridge", "l-bracket",
                                         "two-bar-truss", "bolted-lever"));

}  // namespace
}  // namespace quillane
