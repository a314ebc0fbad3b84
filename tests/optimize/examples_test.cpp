// The shipped examples: written by their maker, and carried by one connected plate to the end.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

constexpr int kSteps = 150;  // as docs/examples.md states them
const std::filesystem::path kFolder = std::filesystem::path(QUILLANE_SOURCE_DIR) / "examples";

/// Empties the cell and all with material that it reaches over common edges.
void TakeAway(Array2<Integer>& cells, int rows, int columns, int i, int j) {
  if (i < 1 || j < 1 || i > rows || j > columns || cells(i, j) <= 0) return;
  cells(i, j) = kCellEmpty;
  for (const int step : {-1, 1}) {
    TakeAway(cells, rows, columns, i + step, j);
    TakeAway(cells, rows, columns, i, j + step);
  }
}

/// Whether loads and supports, all on non-design cells, hang together through material.
bool NonDesignCellsConnect(const Model& model) {
  const int rows = model.CellRowCount, columns = model.CellColumnCount;
  Array2<Integer> rest = model.CellState;
  const auto raw = rest.Raw();
  const int first = static_cast<int>(std::ranges::find(raw, kCellNonDesign) - raw.begin());
  TakeAway(rest, rows, columns, first % rows + 1, first / rows + 1);
  return std::ranges::count(raw, kCellNonDesign) == 0;
}

TEST(Examples, AreWhatTheirMakerWrites) {
  const test::ScratchFolder scratch;
  const std::string command = "\"" QUILLANE_MAKE_EXAMPLES "\" \"" + scratch.Path().string() + "\"";
  ASSERT_EQ(std::system(command.c_str()), 0);
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() != ".model") continue;
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(test::ReadFile(entry.path()) == test::ReadFile(scratch / name)) << name;
    ++count;
  }
  EXPECT_EQ(count, std::distance(std::filesystem::directory_iterator(scratch.Path()), {}));
}

class Example : public testing::TestWithParam<const char*> {};

TEST_P(Example, StaysConnectedAndSolvedWhileHalfItsVolumeGoes) {
  Model model;
  OpenModelFile(model, kFolder / (GetParam() + std::string(".model")));
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
