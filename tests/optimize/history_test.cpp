// The history's records, and where a series of steps ends.
#include "optimize/history.h"

#include <gtest/gtest.h>

#include <string>

#include "model/run_time_error.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

TEST(History, HoldsOneRecordAnEventUntilTheStepNumberOverflows) {
  const test::ScratchFolder folder;
  Model model = test::Cantilever(4, 8);
  StressAnalysis(model);
  model.StepCount = 32765;
  model.MaxStress = 245.125, model.AvgStress = 87.5, model.MinStress = 0.25;
  History history;
  history.Start(model, folder / "History.tmp");
  for (int step = 0; step < 2; ++step) Optimization(model, history);
  EXPECT_TRUE(test::ReadFile(folder / "History.tmp").ends_with("\r\n")) << "whole while it runs";
  EXPECT_THROW(Optimization(model, history), RunTimeError);
  history.Close(model);
  history.Close(model);  // harmless
  EXPECT_EQ(model.HistoryRecording, 0);
  const std::string text = test::ReadFile(folder / "History.tmp");
  EXPECT_TRUE(text.starts_with("Iteration, Max, Avg, Min\r\n32765,245.125,87.5,0.25\r\n")) << text;
  std::string numbers;
  for (std::size_t at = text.find('\n') + 1; at < text.size(); at = text.find('\n', at) + 1) {
    numbers += text.substr(at, text.find(',', at) - at) + " ";
  }
  EXPECT_EQ(numbers, "32765 32765 32766 32767 ");
}

TEST(History, KeepsTheEarlierOneAndRefusesWhatIsNoFile) {
  const test::ScratchFolder folder;
  const std::filesystem::path path = folder / "History.tmp";
  test::WriteFile(path, "earlier");
  test::WriteFile(folder / "History.tmp~", "earlier still");
  KeepEarlierHistory(path);
  KeepEarlierHistory(path);  // nothing is there any more
  EXPECT_EQ(test::ReadFile(folder / "History.tmp~"), "earlier");
  EXPECT_FALSE(std::filesystem::exists(path));

  Model model;
  for (const std::filesystem::path& bad : {folder / "none/H", folder.Path(), {"/dev/null"}}) {
    History history;
    EXPECT_THROW(history.Start(model, bad), RunTimeError) << bad;
    EXPECT_EQ(model.HistoryRecording, kTrue) << "set before the attempt";
  }
}

}  // namespace
}  // namespace quillane
