// Damaged model files, sent through analysis and steps as far as they go.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/run_time_error.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

TEST(DamagedModels, EndWithAResultOrANamedError) {
  const test::ScratchFolder folder;
  Model plate = test::Cantilever(6, 9);
  plate.CellState(2, 3) = kCellNonDesign;
  plate.CellState(5, 5) = kCellCutOut;
  plate.StressTarget = 1.5F;
  const std::string valid = ModelFileText(plate);
  std::mt19937 random(2026);
  int opened = 0, refused = 0, failed = 0;
  for (int round = 0; round < 2000; ++round) {
    test::WriteFile(folder / "damaged.model", test::Damaged(valid, random));
    Model model;
    try {
      OpenModelFile(model, folder / "damaged.model");
      ++opened;
      MarkActiveNodes(model);
      StressAnalysis(model);
      History history;
      for (int step = 0; step < 2; ++step) Optimization(model, history);
      (void)ModelFileText(model);
    } catch (const ModelFileError& error) {
      EXPECT_GT(error.Line(), 0);
      ++refused;
    } catch (const RunTimeError& error) {
      EXPECT_NE(std::string(error.what()), "");
      ++failed;
    }
  }
  EXPECT_GT(opened, 300);
  EXPECT_GT(refused, 300);
  EXPECT_GT(failed, 100);
}

}  // namespace
}  // namespace quillane
