// Longer runs: to a volume, to rest, with tables and pipes, ended by signals.
#include <QJsonArray>
#include <algorithm>

#include "batch/program.h"
#include "optimize/volume_search.h"

namespace quillane {
namespace {

using Study = Batch;

TEST_F(Study, AVolumeFractionIsReachedAndRecordedStepForStep) {
  Save("wide.model", [](Model& m) { m = test::Cantilever(10, 20); });
  const std::string half = "wide.model --volume-fraction 0.5 --save ";
  ASSERT_EQ(Run(half + "a.model --json a.json --jobs 1"), 0) << err_;
  EXPECT_TRUE(Contains(out_, "volume fraction 0.5 reached in ")) << out_;
  EXPECT_TRUE(Contains(out_, "2 design cells at loads were made non-design cells")) << out_;
  const QJsonObject summary = Json("a.json");
  EXPECT_NEAR(summary["volumeFraction"].toDouble(), 0.5, kVolumeTolerance + 1e-9);
  EXPECT_TRUE(summary["connected"].toBool() && summary["converged"].toBool());
  EXPECT_EQ(summary["pieces"].toInt(), 1);
  EXPECT_GE(summary["attempts"].toArray().size(), 2);
  ASSERT_EQ(Run(half + "b.model --course c.csv --history h.tmp --jobs 3"), 0);
  EXPECT_EQ(Text("a.model"), Text("b.model"));
  const int steps = summary["steps"].toInt();
  EXPECT_EQ(std::ranges::count(Text("h.tmp"), '\n'), steps + 2);
  EXPECT_EQ(std::ranges::count(Text("c.csv"), '\n'), steps + 2);
  const std::vector<std::string> last = TableOf("c.csv").back();
  EXPECT_EQ(last.at(0), std::to_string(steps));
  EXPECT_EQ(last.at(9) + last.at(10), "11") << "converged and connected";

  EXPECT_EQ(Run("plate.model --volume-fraction 0.02"), 4);
  EXPECT_TRUE(Contains(out_, "volume fraction 0.02 not reached")) << out_;
  EXPECT_EQ(Run("plate.model --volume-fraction 0.6 --epsilon 10 --save whole.model"), 4);
  EXPECT_TRUE(Contains(out_, "1.0000 is the lightest of 6 attempts")) << out_;
  Save("hollow.model", [](Model& m) { m.Thickness = 0; });
  Save("torn.model", [](Model& m) { m.ElementNodes(1, 1) = 5000; });
  ExpectEnds({{"plate.model --volume-fraction 0.5 --lambda 1e-6", 2, "1E-06 is too small"},
              {"hollow.model --volume-fraction 0.5", 2, "thickness is not above 0"},
              {"torn.model --volume-fraction 0.5", 1, ""}});
}

TEST_F(Study, ARunGoesOnFromATableOfCells) {
  const std::string course = "plate.model --stress-target 3 --lambda 0.1 ";
  ASSERT_EQ(Run(course + "--steps 30 --history whole --cells whole.csv --quiet"), 0) << err_;
  ASSERT_EQ(Run(course + "--steps 12 --history parts --cells part.csv --quiet"), 0);
  ASSERT_EQ(Run(course + "--resume part.csv --steps 18 --history parts --cells end.csv"), 0)
      << err_;
  EXPECT_EQ(Text("whole"), Text("parts"));
  EXPECT_EQ(Text("whole.csv"), Text("end.csv"));
  ASSERT_EQ(Run(course + "--resume part.csv --steps 18 --history alone"), 0);
  EXPECT_TRUE(Text("alone").starts_with("Iteration, Max, Avg, Min\r\n12,"));

  if (Shell("script -qec true none") == 0) {  // the progress line counts the steps of this run
    EXPECT_EQ(Shell("TERM=xterm script -qec '" QUILLANE_BATCH " " + course +
                    "--resume part.csv --steps 6' seen.txt"),
              0);
    EXPECT_TRUE(Contains(Text("seen.txt"), "####] step 6/6"));
  }
  const std::string table = Text("part.csv");
  const std::pair<std::string, const char*> bad[] = {
      {table.substr(0, table.size() / 2), "spoilt.csv: line "},
      {"a,b\n1,2\n", "line 1: this is no table of --cells: it has no column row"},
      {table + "7,1,1,0,0,0,0,0,12\n", "line 74: the table goes on after the last cell"},
      {"row,column,state,potential,step\n1,1,5,0,0\n", "line 2: 5 is no state of a cell"},
      {"row,column,state,potential,step\n1,1,1,nan,0\n", "line 2: the potential is not"},
      {"row,column,state,potential,step\n1,1,-3,0,0\n", "line 2: the cell is cut out in"}};
  test::WriteFile(folder_ / "dos.csv", "\xEF\xBB\xBFrow,column,state,potential,step\r\n1,2\r\n");
  ExpectEnds({{course + "--resume dos.csv", 2, "line 2: cell (1, 1) of the model's grid"}});
  for (const auto& [text, words] : bad) {
    test::WriteFile(folder_ / "spoilt.csv", text);
    ExpectEnds({{course + "--resume spoilt.csv --steps 3", 2, words}});
  }
}

TEST_F(Study, RestEndsTheRunAndADissolvedPlateIsMarked) {
  ASSERT_EQ(Run("plate.model --until-steady --lambda 0.2 --json j.json --course c.csv"), 0) << err_;
  const QJsonObject rest = Json("j.json");
  const int from = rest["steadyFromStep"].toInt(-1), steps = rest["steps"].toInt();
  EXPECT_EQ(steps, from + 35) << "7 / Lambda";
  EXPECT_TRUE(Contains(out_, "at rest from step " + std::to_string(from) + " on")) << out_;
  const Table course = TableOf("c.csv");
  EXPECT_EQ(std::ssize(course), steps + 2);
  for (int step = 0; step <= steps; ++step) {
    const std::vector<std::string>& row = course.at(static_cast<std::size_t>(step) + 1);
    EXPECT_EQ(row.at(0), std::to_string(step));
    EXPECT_TRUE(step < from || (row.at(3) != "0") == (step == from && from > 0)) << step;
  }
  EXPECT_EQ(Run("plate.model --until-steady --steps 4 --lambda 0.2"), 4);
  EXPECT_TRUE(Contains(out_, "not at rest after 4 steps"));

  Save("tip.model", [](Model& m) { m.CellState(3, 12) = m.CellState(4, 12) = kCellNonDesign; });
  EXPECT_EQ(Run("tip.model --steps 30 --stress-target 20 --json j.json"), 3) << err_;
  EXPECT_FALSE(Json("j.json")["connected"].toBool(true));
  EXPECT_EQ(Run("plate.model --steps 30 --epsilon 30 --json j.json"), 1);
  EXPECT_TRUE(Contains(Json("j.json")["error"].toString().toStdString(), "optimization step 1"));
}

TEST_F(Study, PipesServeAsModelAndOutput) {
  ASSERT_EQ(Run("plate.model --steps 3 --cells c.csv --nodes n.csv --save e.model --quiet"), 0);
  const std::string program = "'" QUILLANE_BATCH "' ";
  ASSERT_EQ(Shell("(cat plate.model | " + program + "- --steps 3 --cells -)"), 0);
  EXPECT_EQ(out_, Text("c.csv"));
  EXPECT_TRUE(Contains(err_, "volume ")) << "the summary goes to standard error";
  ASSERT_EQ(Shell("(" + program + "plate.model --steps 3 --save - --quiet | " + program +
                  "- --quiet --save -)"),
            0);
  EXPECT_EQ(out_, Text("e.model"));
  const std::string toPipe = program + "plate.model --steps 3 --quiet --nodes p; wait)";
  ASSERT_EQ(Shell("mkfifo p && (cat p > got & " + toPipe), 0);
  EXPECT_EQ(Text("got"), Text("n.csv"));
  EXPECT_TRUE(fs::is_fifo(folder_ / "p"));
}

TEST_F(Study, OneOutputThatFailsDoesNotKeepTheOthers) {
  EXPECT_EQ(Run("plate.model --cells /dev/full --nodes n.csv --save e.model --json j.json"), 2);
  EXPECT_TRUE(Contains(err_, "/dev/full: it cannot be written to: No space")) << err_;
  EXPECT_TRUE(Contains(out_, "volume "));
  EXPECT_TRUE(Exists("n.csv") && Exists("e.model"));
  EXPECT_EQ(Json("j.json")["exitStatus"].toInt(), 2);
  for (const std::string stream : {">/dev/full)", ">&-)"}) {
    EXPECT_EQ(Shell("('" QUILLANE_BATCH "' plate.model --history h.tmp " + stream), 2) << stream;
    EXPECT_TRUE(Contains(err_, "standard output: it cannot be written to")) << err_;
    EXPECT_TRUE(Text("h.tmp").starts_with("Iteration, Max, Avg, Min\r\n0,"));
  }
  ASSERT_EQ(Run("plate.model --steps 1 --frames f --quiet"), 0);
  EXPECT_EQ(Run("plate.model --frames f --quiet"), 2);
  EXPECT_TRUE(Contains(err_, "f: the folder holds frames already, such as frame-0000"));
}

TEST_F(Study, ASignalEndsTheRunWithEveryFileComplete) {
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    fs::remove(folder_ / "c.csv");
    const pid_t child = Start({"plate.model", "--steps", "32767", "--quiet", "--course", "c.csv",
                               "--history", "h.tmp", "--save", "end.model", "--json", "j.json"});
    EXPECT_TRUE(Wait([this] { return Text("c.csv").size() >= 4000; }));
    kill(child, number);
    EXPECT_EQ(StatusOf(child), 128 + number);
    const std::string steps = std::to_string(Json("j.json")["steps"].toInt());
    EXPECT_EQ(TableOf("c.csv").back().front(), steps);
    EXPECT_TRUE(Text("h.tmp").ends_with("\r\n"));
    Model end;
    EXPECT_NO_THROW(OpenModelFile(end, folder_ / "end.model"));
  }
}

}  // namespace
}  // namespace quillane
