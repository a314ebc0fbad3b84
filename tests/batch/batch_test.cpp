// quillane-batch as a user calls it: the program itself, its files, streams and exit status.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <sstream>

#include "edit/settings.h"
#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::ReadFile;
using test::ScratchFolder;

class Batch : public ::testing::Test {
 protected:
  void SetUp() override {
    model_ = test::Cantilever(6, 12);
    SetParameters(model_, "3", "3", "0.1");
    SaveModelFile(model_, folder_ / "plate.model");
  }

  /// Runs the program in the scratch folder; keeps standard output and error.
  int Run(const std::string& arguments) { return Shell("'" QUILLANE_BATCH "' " + arguments); }

  int Shell(const std::string& command) {
    const int status = std::system(
        ("cd '" + folder_.Path().string() + "' && " + command + " >out.txt 2>err.txt </dev/null")
            .c_str());
    out_ = ReadFile(folder_ / "out.txt");
    err_ = ReadFile(folder_ / "err.txt");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  ScratchFolder folder_;
  Model model_;
  std::string out_, err_;
};

bool Contains(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

TEST_F(Batch, WritesTheSameCourseAndTheSameNumbersAsTheEngine) {
  ASSERT_EQ(Run("plate.model --steps 4 --epsilon 2.5 --lambda .15x --history h.tmp --save e.model "
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
  EXPECT_EQ(line, "row,column,state,stress,potential");
  for (int i = 1; i <= 6; ++i) {
    for (int j = 1; j <= 12; ++j) {
      double row = 0, column = 0, state = 0, stress = -1, potential = -1;
      std::getline(cells, line);
      EXPECT_EQ(std::sscanf(line.c_str(), "%lf,%lf,%lf,%lf,%lf", &row, &column, &state, &stress,
                            &potential),
                5);
      EXPECT_EQ(row * 100 + column, i * 100 + j);
      EXPECT_EQ(state, model_.CellState(i, j));
      EXPECT_EQ(stress, model_.CellStress(i, j));
      EXPECT_EQ(potential, model_.Potential(i, j));
    }
  }
  EXPECT_TRUE(ReadFile(folder_ / "n.csv").starts_with("node,x,y,u,v\n1,0,0,0,0\n"));
  EXPECT_TRUE(Contains(out_, "equations    " + std::to_string(report.equations) + "\n")) << out_;
  EXPECT_TRUE(Contains(out_, "iterations   " + std::to_string(report.iterations) + "\n"));
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
  EXPECT_EQ(pictures.size(), 3U);
}

TEST_F(Batch, TellsWhatDidNotConverge) {
  model_.NodeFreedom.ReDim({0, model_.NodeCount}, {1, 2});
  SaveModelFile(model_, folder_ / "loose.model");
  EXPECT_EQ(Run("loose.model"), 0);
  EXPECT_TRUE(Contains(out_, "did not converge in 1 of 1 solves, first in the stress analysis"));
}

TEST_F(Batch, ATerminalSeesTheCourseOnOneLineThatVanishes) {
  if (Shell("script -qec true none") != 0) GTEST_SKIP() << "no terminal can be had: " << err_;
  ASSERT_EQ(Shell("script -qec '" QUILLANE_BATCH " plate.model --steps 3' seen.txt"), 0);
  const std::string seen = ReadFile(folder_ / "seen.txt");
  EXPECT_TRUE(
      Contains(seen, "\r\x1b[K[....................] step 0/3  volume 7.20E+05 mm^3  max "));
  EXPECT_TRUE(Contains(seen, "\r\x1b[K[####################] step 3/3"));
  EXPECT_TRUE(Contains(seen, "0 s left\r\x1b[Ksteps        3\r\n")) << seen;
}

TEST_F(Batch, ExitStatusAndWordsOfEveryFailure) {
  test::WriteFile(folder_ / "bad.model", "2000,100,0.5,0.5\r\n2,x\r\n");
  Model unloaded = model_;
  for (double& force : unloaded.NodeLoad.Raw()) force = 0;
  SaveModelFile(unloaded, folder_ / "unloaded.model");
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
      {"plate.model --epsilon 40000", 2, "Epsilon does not fit"},
      {"plate.model --lambda 1e999", 2, "Lambda is too large"},
      {"plate.model --save none/x.model", 2, "none/x.model: the folder does not exist"},
      {"plate.model --history .", 2, "history . cannot be written"},
      {"plate.model --cells none/c.csv", 2, "none/c.csv: the folder does not exist"},
      {"plate.model --frames plate.model", 2, "the folder cannot be made"},
      {"unloaded.model", 1, "stress analysis: Floating-point error"},
      {"plate.model --epsilon 30 --steps 90", 1, "optimization step 1 of 90 (numbered 0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.arguments), c.status) << c.arguments << err_;
    EXPECT_TRUE(Contains(err_, c.words)) << c.arguments << "\n" << err_;
    EXPECT_EQ(out_, "");
  }
  EXPECT_EQ(Run("--help"), 0);
  EXPECT_TRUE(Contains(out_, "--stress-target"));
}

TEST_F(Batch, AFailingStepOrAnInterruptLeavesWhatWasWrittenComplete) {
  EXPECT_EQ(
      Run("plate.model --epsilon 9 --stress-target 1000 --steps 50 --history h.tmp --frames f"), 1);
  const std::string history = ReadFile(folder_ / "h.tmp");
  EXPECT_TRUE(history.ends_with("\r\n"));
  EXPECT_EQ(std::count(history.begin(), history.end(), '\n'), 2) << history;
  EXPECT_TRUE(ReadFile(folder_ / "f/frame-00000.png").ends_with("IEND\xae\x42\x60\x82"));

  const pid_t child = fork();
  if (child == 0) {
    std::filesystem::current_path(folder_.Path());
    execl(QUILLANE_BATCH, QUILLANE_BATCH, "plate.model", "--steps", "32767", "--quiet", "--history",
          "i.tmp", "--save", "end.model", nullptr);
    _exit(99);
  }
  for (int wait = 0; wait < 2000 && ReadFile(folder_ / "i.tmp").size() < 4000; ++wait)
    usleep(10000);
  kill(child, SIGINT);
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 130);
  EXPECT_TRUE(ReadFile(folder_ / "i.tmp").ends_with("\r\n"));
  Model end;
  EXPECT_NO_THROW(OpenModelFile(end, folder_ / "end.model"));
}

}  // namespace
}  // namespace quillane
