// The shipped examples: written by their maker, and carried by the plate to the end.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

constexpr int kSteps = 150;  // as docs/examples.md states them

class Example : public testing::TestWithParam<const char*> {};

TEST_P(Example, IsWhatItsMakerWritesAndStaysSolvedWhileHalfItsVolumeGoes) {
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
  }
  EXPECT_NEAR(model.Volume / volume, 0.525, 0.04);
}

INSTANTIATE_TEST_SUITE_P(Shipped, Example,
                         testing::Values("cantilever", "half-mbb-beam", "bridge", "l-bracket",
                                         "two-bar-truss", "bolted-lever"));

}  // namespace
}  // namespace quillane
