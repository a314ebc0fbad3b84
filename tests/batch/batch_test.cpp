// quillane-batch as a user calls it: the program itself, its files, streams and exit status.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>

#include "batch/program.h"
#include "export/outline_file.h"
#include "optimize/optimization_step.h"

namespace quillane {
namespace {

TEST_F(Batch, WritesTheSameCourseAndTheSameNumbersAsTheEngine) {
  ASSERT_EQ(Run("plate.model --steps 4 --epsilon 02 --lambda +.15 --history h.tmp --save e.model "
                "--cells c.csv --nodes n.csv"),
            0);
  EXPECT_EQ(err_, "");
  History history;
  SetParameters(model_, "3", "2", "0.15");
  StressAnalysis(model_);
  history.Start(model_, folder_ / "expected.tmp");
  SolveReport report;
  for (int step = 0; step < 4; ++step) report = Optimization(model_, history);
  history.Close(model_);
  EXPECT_EQ(ReadFile(folder_ / "h.tmp"), ReadFile(folder_ / "expected.tmp"));
  EXPECT_EQ(ReadFile(folder_ / "e.model"), ModelFileText(model_));

  std::istringstream cells(ReadFile(folder_ / "c.csv"));
  std::string line;
  std::getline(cells, line);
  EXPECT_EQ(line, "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy");
  for (int i = 1; i <= 6; ++i) {
    for (int j = 1; j <= 12; ++j) {
      double row = 0, column = 0, state = 0, stress = -1, potential = -1, x = 0, y = 0, xy = 0;
      std::getline(cells, line);
      EXPECT_EQ(std::sscanf(line.c_str(), "%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf", &row, &column, &state,
                            &stress, &potential, &x, &y, &xy),
                8);
      EXPECT_NEAR(std::sqrt(x * x + y * y - x * y + 3 * xy * xy), stress, 1e-9 * stress);
      EXPECT_EQ(row * 100 + column, i * 100 + j);
      EXPECT_EQ(state, model_.CellState(i, j));
      EXPECT_EQ(stress, model_.CellStress(i, j));
      EXPECT_EQ(potential, model_.Potential(i, j));
    }
  }
  EXPECT_TRUE(ReadFile(folder_ / "n.csv").starts_with("node,x,y,u,v\n1,0,0,0,0\n"));
  EXPECT_TRUE(Contains(out_, "equations      " + std::to_string(report.equations) + "\n")) << out_;
  EXPECT_TRUE(Contains(out_, "iterations     " + std::to_string(report.iterations) + "\n"));
}

TEST_F(Batch, LeavesPicturesOfTheAskedSize) {
  ASSERT_EQ(Run("plate.model --quiet --steps 2 --frames f/a --image i.png --map potential "
                "--size 640x400"),
            0);
  EXPECT_EQ(out_ + err_, "");
  const std::string header("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x02\x80\0\0\x01\x90", 24);
  for (const char* name : {"i.png", "f/a/frame-00000.png", "f/a/frame-00002.png"}) {
    EXPECT_TRUE(ReadFile(folder_ / name).starts_with(header)) << name;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "f/a"), {}), 3);
  std::set<std::string> pictures;
  for (const std::string kind : {"stress", "potential", "model"}) {
    EXPECT_EQ(Run("plate.model --quiet --image i.png --map " + kind), 0);
    pictures.insert(ReadFile(folder_ / "i.png"));
  }
  for (const char* look : {"--fit", "--no-grid", "--range 0,9", "--label"}) {
    EXPECT_EQ(Run(std::string("plate.model --quiet --image i.png ") + look), 0) << err_;
    pictures.insert(ReadFile(folder_ / "i.png"));
  }
  EXPECT_EQ(pictures.size(), 7U) << "every look is another picture";
}

TEST_F(Batch, WritesShapeAndFieldsForOtherPrograms) {
  ASSERT_EQ(Run("plate.model --steps 2 --save e.model --outline e.stl --smooth --vtu e.vtu "
                "--frames f"),
            0);
  EXPECT_TRUE(Contains(out_, "smoothing changed the area by "));
  Model end;
  OpenModelFile(end, folder_ / "e.model");
  EXPECT_EQ(ReadFile(folder_ / "e.stl"), MakeOutlineFile(OutlineFormat::kStl, end, true).text);
  EXPECT_EQ(ReadFile(folder_ / "e.vtu"), ReadFile(folder_ / "f/frame-00002.vtu"));
  EXPECT_TRUE(Contains(ReadFile(folder_ / "f/frames.pvd"), "timestep=\"2\""));
}

TEST_F(Batch, TellsWhatDidNotConverge) {
  model_.NodeFreedom.ReDim({0, model_.NodeCount}, {1, 2});
  SaveModelFile(model_, folder_ / "loose.model");
  EXPECT_EQ(Run("loose.model"), 3);
  EXPECT_TRUE(Contains(out_, "did not converge in 1 of 1 solves, first in the stress analysis"));
  EXPECT_TRUE(Contains(out_, "a load has no way to supports that hold it"));
  EXPECT_EQ(Run("loose.model --quiet"), 3);
  EXPECT_TRUE(Contains(err_, "the last solve did not converge"));
}

TEST_F(Batch, ATerminalSeesTheCourseOnOneLineThatVanishes) {
  if (Shell("script -qec true none") != 0) GTEST_SKIP() << "no terminal can be had: " << err_;
  ASSERT_EQ(Shell("TERM=xterm script -qec 'stty cols 40; " QUILLANE_BATCH
                  " plate.model --steps 3' seen.txt"),
            0);
  const std::string seen = ReadFile(folder_ / "seen.txt");
  EXPECT_TRUE(Contains(seen, "\r\x1b[K[....................] step 0/3  100"));
  EXPECT_TRUE(Contains(seen, "\r\x1b[K[####################] step 3/3"));
  EXPECT_TRUE(Contains(seen, "\r\x1b[Ksteps          3\r\n")) << seen;
  for (std::size_t at = 0; (at = seen.find("\x1b[K", at)) != std::string::npos; at += 3) {
    EXPECT_LT(seen.find_first_of("\r\n", at) - at, 3 + 40U) << "wider than the terminal";
  }
  ASSERT_EQ(Shell("TERM=dumb script -qec '" QUILLANE_BATCH " plate.model --steps 3' seen.txt"), 0);
  EXPECT_FALSE(Contains(ReadFile(folder_ / "seen.txt"), "\x1b"));
}

TEST_F(Batch, ExitStatusAndWordsOfEveryFailure) {
  test::WriteFile(folder_ / "bad.model", "2000,100,0.5,0.5\r\n2,x\r\n");
  Model unloaded = model_;
  for (double& force : unloaded.NodeLoad.Raw()) force = 0;
  SaveModelFile(unloaded, folder_ / "unloaded.model");
  Model bare = model_;
  for (Integer& cell : bare.CellState.Raw()) cell = kCellEmpty;
  SaveModelFile(bare, folder_ / "bare.model");
  const struct {
    const char* arguments;
    int status;
    const char* words;
  } cases[] = {
      {"", 2, "MODEL is required"},
      {"none.model", 2, "none.model: no such file"},
      {"bad.model", 2, "bad.model: line 2: the grid size is not a number: \"x\""},
      {"plate.model --wrong", 2, "--wrong"},
      {"plate.model --steps -1", 2, "--steps"},
      {"plate.model --steps 32768", 2, "--steps"},
      {"plate.model --map colours", 2, "--map"},
      {"plate.model --save ''", 2, "--save"},
      {"plate.model --history ./plate.model", 2, "./plate.model: two files of one name"},
      {"plate.model --cells a --save ../\"${PWD##*/}\"/a", 2, "a: two files of one name"},
      {"plate.model --size 0x100", 2, "--size"},
      {"plate.model --range 9,0", 2, "--range: wants MIN,MAX"},
      {"plate.model --steps 0x10", 2, "--steps: wants a whole number"},
      {"plate.model --stress-target ''", 2, "--stress-target: wants a decimal number"},
      {"plate.model --stress-target 24,5", 2, "--stress-target"},
      {"plate.model --epsilon 40000", 2, "--epsilon: wants a whole number"},
      {"plate.model --lambda 1e999", 2, "--lambda"},
      {"plate.model --lambda nan", 2, "--lambda"},
      {"plate.model --volume-fraction 1.5", 2, "--volume-fraction: wants a number between"},
      {"plate.model --volume-fraction .5 --steps 9", 2, "--volume-fraction"},
      {"plate.model --until-steady --lambda 2", 2, "--lambda: --until-steady wants"},
      {"plate.model --lambda 0", 1, "Lambda must not be 0: give --lambda."},
      {"plate.model --cells - --nodes -", 2, "only one output can go to standard output"},
      {"plate.model --image .", 2, ".: the path names a folder"},
      {"plate.model --frames f --image f/frame-00001.png", 2, "this is the name of a frame"},
      {"plate.model --save none/x.model", 2, "none/x.model: the folder does not exist"},
      {"plate.model --history .", 2, ".: the path names a folder"},
      {"plate.model --frames f --vtu f/frame-00001.vtu", 2, "this is the name of a frame"},
      {"plate.model --outline a.pdf", 2, "--outline: wants .svg, .dxf or .stl, not a.pdf"},
      {"plate.model --outline none/a.svg", 2, "none/a.svg: the folder does not exist"},
      {"plate.model --smooth", 2, "--smooth requires --outline"},
      {"bare.model --outline a.svg", 2, "a.svg: the plate has no material"},
      {"plate.model --cells none/c.csv", 2, "none/c.csv: the folder does not exist"},
      {"plate.model --frames plate.model", 2, "the folder cannot be made"},
      {"unloaded.model", 1, "stress analysis: Floating-point error"},
      {"unloaded.model", 1, "The model has no load."},
      {"plate.model --epsilon 30 --steps 90", 1, "optimization step 1 (numbered 0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.arguments), c.status) << c.arguments << err_;
    EXPECT_TRUE(Contains(err_, c.words)) << c.arguments << "\n" << err_;
    EXPECT_EQ(out_, "");
  }
  EXPECT_EQ(Run("--help"), 0);
  EXPECT_TRUE(Contains(out_, "--stress-target"));
}

TEST_F(Batch, AFailingStepLeavesWhatWasWrittenComplete) {
  EXPECT_EQ(
      Run("plate.model --epsilon 9 --stress-target 1000 --steps 50 --history h.tmp --frames f "
          "--vtu end.vtu --outline end.svg"),
      1);
  const std::string history = ReadFile(folder_ / "h.tmp");
  EXPECT_TRUE(history.ends_with("\r\n"));
  EXPECT_EQ(std::count(history.begin(), history.end(), '\n'), 2) << history;
  EXPECT_TRUE(ReadFile(folder_ / "f/frame-00000.png").ends_with("IEND\xae\x42\x60\x82"));
  EXPECT_TRUE(Contains(ReadFile(folder_ / "f/frames.pvd"), "frame-00000.vtu"));
  for (const char* name : {"end.vtu", "end.svg"}) EXPECT_FALSE(exists(folder_ / name)) << name;
}

}  // namespace
}  // namespace quillane
