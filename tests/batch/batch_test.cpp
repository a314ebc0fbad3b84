// quillane-batch as a user calls it: the program itself, its files, streams and exit status; what
// --check finds.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/program.h"
#include "export/outline_file.h"
#include "optimize/history.h"

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
  Course course(model_, {&history});
  for (int step = 0; step < 4; ++step) course.Step();
  history.Close(model_);
  EXPECT_EQ(Text("h.tmp"), Text("expected.tmp"));
  EXPECT_EQ(Text("e.model"), ModelFileText(model_));

  EXPECT_TRUE(
      Text("c.csv").starts_with("row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step\n"));
  const Table cells = TableOf("c.csv");
  ASSERT_EQ(cells.size(), 73U);
  for (std::size_t k = 0; k < 72; ++k) {
    const auto field = [&row = cells[k + 1]](std::size_t column) {
      return std::stod(row.at(column));
    };
    const int i = 1 + static_cast<int>(k) / 12, j = 1 + static_cast<int>(k) % 12;
    EXPECT_EQ(std::vector({field(0), field(1), field(2), field(3), field(4), field(8)}),
              std::vector({1.0 * i, 1.0 * j, 1.0 * model_.CellState(i, j), model_.CellStress(i, j),
                           model_.Potential(i, j), 4.0}));
    const double x = field(5), y = field(6), xy = field(7);
    EXPECT_NEAR(std::sqrt(x * x + y * y - x * y + 3 * xy * xy), field(3), 1e-9 * field(3));
  }
  EXPECT_TRUE(Text("n.csv").starts_with("node,x,y,u,v\n1,0,0,0,0\n"));
  const SolveReport& last = course.Figures().lastSolve;
  EXPECT_TRUE(Contains(out_, "equations      " + std::to_string(last.equations) + "\n")) << out_;
  EXPECT_TRUE(Contains(out_, "iterations     " + std::to_string(last.iterations) + "\n")) << out_;
}

TEST_F(Batch, LeavesPicturesOfTheAskedSize) {
  ASSERT_EQ(Run("plate.model --quiet --steps 2 --frames f/a --image i.png --map potential "
                "--size 640x400"),
            0);
  EXPECT_EQ(out_ + err_, "");
  const std::string header("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x02\x80\0\0\x01\x90", 24);
  for (const char* name : {"i.png", "f/a/frame-00000.png", "f/a/frame-00002.png"}) {
    EXPECT_TRUE(Text(name).starts_with(header)) << name;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_ / "f/a"), {}), 3);
  std::set<std::string> pictures;
  for (const std::string look : {"--map stress", "--map potential", "--map model", "--fit",
                                 "--no-grid", "--range 0,9", "--label"}) {
    EXPECT_EQ(Run("plate.model --quiet --image i.png " + look), 0) << err_;
    pictures.insert(Text("i.png"));
  }
  EXPECT_EQ(pictures.size(), 7U) << "each option changes the picture";
}

TEST_F(Batch, WritesShapeAndFieldsForOtherPrograms) {
  ASSERT_EQ(Run("plate.model --steps 2 --save e.model --outline e.stl --smooth --vtu e.vtu "
                "--frames f"),
            0);
  EXPECT_TRUE(Contains(out_, "smoothing changed the area by "));
  Model end;
  OpenModelFile(end, folder_ / "e.model");
  EXPECT_EQ(Text("e.stl"), MakeOutlineFile(OutlineFormat::kStl, end, SmoothEdges::kDesign).text);
  EXPECT_EQ(Text("e.vtu"), Text("f/frame-00002.vtu"));
  EXPECT_TRUE(Contains(Text("f/frames.pvd"), "timestep=\"2\""));
}

TEST_F(Batch, TellsWhatDidNotConverge) {
  Save("loose.model", [](Model& m) { std::ranges::fill(m.NodeFreedom.Raw(), 0); });
  EXPECT_EQ(Run("loose.model"), 3);
  EXPECT_TRUE(Contains(out_, "did not converge in 1 of 1 solves, first in the stress analysis"));
  EXPECT_TRUE(Contains(out_, "a load is not connected to adequate supports"));
  EXPECT_EQ(Run("loose.model --quiet"), 3);
  EXPECT_TRUE(Contains(err_, "the last solve did not converge"));
  EXPECT_TRUE(Contains(err_, "loose.model: looks wrong: line ")) << err_;
  EXPECT_EQ(Run("--strict loose.model --cells c.csv"), 1);
  EXPECT_FALSE(Exists("c.csv"));
  EXPECT_EQ(Run("--check loose.model"), 1);
  EXPECT_TRUE(out_.starts_with("loose.model: line ")) << out_;
  EXPECT_EQ(Run("--check plate.model"), 0);
}

TEST_F(Batch, ATerminalSeesTheCourseOnOneLineThatVanishes) {
  if (Shell("script -qec true none") != 0) GTEST_SKIP() << "no terminal available: " << err_;
  const std::string command = QUILLANE_BATCH " plate.model --steps 3' seen.txt";
  ASSERT_EQ(Shell("TERM=xterm script -qec 'stty cols 40; " + command), 0);
  const std::string seen = Text("seen.txt");
  EXPECT_TRUE(Contains(seen, "\r\x1b[K[....................] step 0/3  100"));
  EXPECT_TRUE(Contains(seen, "\r\x1b[K[####################] step 3/3"));
  EXPECT_TRUE(Contains(seen, "\r\x1b[Ksteps          3\r\n")) << seen;
  for (std::size_t at = 0; (at = seen.find("\x1b[K", at)) != std::string::npos; at += 3) {
    EXPECT_LT(seen.find_first_of("\r\n", at) - at, 3 + 40U) << "wider than the terminal";
  }
  ASSERT_EQ(Shell("TERM=dumb script -qec '" + command), 0);
  EXPECT_FALSE(Contains(Text("seen.txt"), "\x1b"));
}

TEST_F(Batch, ExitStatusAndWordsOfEveryFailure) {
  test::WriteFile(folder_ / "bad.model", "2000,100,0.5,0.5\r\n2,x\r\n");
  Save("unloaded.model", [](Model& m) { std::ranges::fill(m.NodeLoad.Raw(), 0.0); });
  Save("bare.model", [](Model& m) { std::ranges::fill(m.CellState.Raw(), kCellEmpty); });
  ExpectEnds({
      {"", 2, "MODEL is required"},
      {"none.model", 2, "none.model: no such file"},
      {"bad.model", 2, "bad.model: line 2: the grid size is not a number: \"x\""},
      {"plate.model --steps -1", 2, "--steps"},
      {"plate.model --map colours", 2, "--map: expects stress, potential or model"},
      {"plate.model --size 0x100", 2, "--size"},
      {"plate.model --range 9,0", 2, "--range: expects MIN,MAX"},
      {"plate.model --stress-target 24,5", 2, "--stress-target: expects a decimal number"},
      {"plate.model --epsilon 40000", 2, "--epsilon: expects a whole number"},
      {"plate.model --lambda nan", 2, "--lambda"},
      {"plate.model --volume-fraction 1.5", 2, "--volume-fraction: expects a number above 0"},
      {"plate.model --volume-fraction .5 --steps 9", 2, "--volume-fraction"},
      {"plate.model --until-steady --lambda 2", 2, "--lambda: --until-steady expects"},
      {"plate.model --lambda 0", 1, "Lambda must not be 0: give --lambda."},
      {"plate.model --image .", 2, ".: the path names a folder"},
      {"plate.model --frames f --image f/frame-00001.png", 2, "this is the name of a frame"},
      {"plate.model --outline a.pdf", 2, "--outline: expects .svg, .dxf or .stl, not a.pdf"},
      {"plate.model --outline -", 2, "--outline: expects --outline-format with standard output"},
      {"plate.model --smooth", 2, "--smooth requires --outline"},
      {"bare.model --outline a.svg", 2, "a.svg: the plate has no material"},
      {"plate.model --cells none/c.csv", 2, "none/c.csv: the folder does not exist"},
      {"plate.model --frames plate.model", 2, "the folder cannot be created"},
      {"unloaded.model", 1, "The model has no load."},
  });
}

TEST_F(Batch, TellsWhatAWorkshopShouldKnowOfAnOutline) {
  Model model = test::Cantilever(8, 12);
  for (const int i : {4, 5}) model.CellState(i, 4) = model.CellState(i, 5) = kCellCutOut;
  for (int i = 1; i <= 8; ++i) model.CellState(i, 9) = i == 2 ? kCellDesign : kCellEmpty;
  model.CellState(8, 8) = kCellEmpty;
  model.CellState(8, 9) = kCellDesign;  // touches the rest in a corner only
  model.CellState(8, 10) = kCellEmpty;
  test::WriteFile(folder_ / "holes.model", ModelFileText(model));
  Run("holes.model --outline - --outline-format dxf --smooth-edges all --json s.json");
  EXPECT_TRUE(out_.ends_with("EOF\n") && Contains(out_, "CIRCLE"));
  for (const char* line :
       {"outline: 2 pieces, 1 hole; shortest segment", "narrowest neck",
        "the outline has 2 pieces, which come apart when it is cut",
        "cells touch in a corner only in 2 places", "circle of radius", "about (400, 400)"}) {
    EXPECT_TRUE(Contains(err_, line)) << line << "\n" << err_;
  }
  const std::string json = Text("s.json");
  for (const char* key : {"\"narrowestNeck\": {", "\"pieces\": 2", "\"radius\": "}) {
    EXPECT_TRUE(Contains(json, key)) << key;
  }
}

TEST_F(Batch, AFailingStepLeavesWhatWasWrittenComplete) {
  EXPECT_EQ(
      Run("plate.model --epsilon 9 --stress-target 1000 --steps 50 --history h.tmp --frames f "
          "--vtu end.vtu --outline end.svg"),
      1);
  const std::string history = Text("h.tmp");
  EXPECT_TRUE(history.ends_with("\r\n") && std::ranges::count(history, '\n') == 2) << history;
  EXPECT_TRUE(Text("f/frame-00000.png").ends_with("IEND\xae\x42\x60\x82"));
  EXPECT_TRUE(Contains(Text("f/frames.pvd"), "frame-00000.vtu"));
  EXPECT_EQ(Text("end.vtu"), Text("f/frame-00000.vtu"));
  EXPECT_TRUE(Contains(Text("end.svg"), "<path"));
  EXPECT_TRUE(Contains(err_, "(the files hold the layout after step 0)\n")) << err_;
}

std::vector<Finding> FindingsIn(const std::string& text) {
  const auto [model, notes] = ModelFromText(text);
  return CheckModel(model, notes).shown;
}

TEST(ModelCheck, NamesLineAndReasonOfWhatIsProbablyUnintended) {
  // 2 x 3 cells, 12 nodes, 6 elements: cells from line 7, nodes 13, elements 25, supports 31,
  // loads 43, parameters 55.
  const struct {
    const char* what;
    void (*spoil)(Model&);
    int line;
    const char* words;
  } cases[] = {
      {"corner", [](Model& m) { m.DomainX2 = 400; }, 3, "2 rows and 3 columns of cells of 100 mm"},
      {"ratio", [](Model& m) { m.PoissonRatio = 1; }, 5, "Poisson's ratio"},
      {"state", [](Model& m) { m.CellState(2, 1) = 4; }, 10, "cell (2, 1) has state 4"},
      {"node", [](Model& m) { m.NodeXY(2, 1) = 77; }, 14, "node 2 at (77, 0) instead of (100, 0)"},
      {"others", [](Model& m) { m.ElementNodes(2, 1) = 1; }, 26, "its nodes are not those"},
      {"clockwise", [](Model& m) { std::swap(m.ElementNodes(2, 2), m.ElementNodes(2, 4)); }, 26,
       "element 2: its nodes run clockwise"},
      {"nowhere", [](Model& m) { m.ElementNodes(1, 1) = 13; }, 25, "a node that is not there"},
      {"free", [](Model& m) { std::ranges::fill(m.NodeFreedom.Raw(), 0); }, 31, "is held"},
      {"hinge",
       [](Model& m) {
         for (const int node : {5, 9}) m.NodeFreedom(node, 1) = m.NodeFreedom(node, 2) = 0;
       },
       50, "node 8: the load is not connected to adequate supports"},
      {"idle", [](Model& m) { m.NodeLoad(8, 2) = 0, m.NodeLoad(1, 2) = 5; }, 43,
       "no load moves the plate"},
      {"unloaded", [](Model& m) { std::ranges::fill(m.NodeLoad.Raw(), 0); }, 43,
       "no node has a load"},
      {"absent", [](Model& m) { m.CellState(1, 3) = m.CellState(2, 3) = 0; }, 50,
       "node 8: its load acts where no cell holds material"},
      {"equations", [](Model& m) { m = test::Cantilever(127, 254); }, 2, "number of equations"},
  };
  for (const auto& c : cases) {
    Model model = test::Cantilever(2, 3);
    c.spoil(model);
    const std::vector<Finding> findings = FindingsIn(ModelFileText(model));
    const bool found = std::any_of(findings.begin(), findings.end(), [&c](const Finding& f) {
      return f.line == c.line && Contains(f.reason, c.words);
    });
    EXPECT_TRUE(found) << c.what << (findings.empty() ? "" : ": " + findings.front().reason);
  }
}

TEST(ModelCheck, ReadsTheTextItself) {
  const std::string valid = ModelFileText(test::Cantilever(2, 3));
  EXPECT_EQ(ModelFromText(valid).model.DomainDefined, kTrue) << "pictures show the domain";
  EXPECT_TRUE(FindingsIn(valid + "\r\n  \n").empty()) << "blank lines are ignored";
  std::vector<Finding> findings = FindingsIn(valid + "9,9\r\n");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].line, 56);
  std::string renumbered = valid;
  findings = FindingsIn(renumbered.replace(renumbered.find("6,100,"), 1, "0"));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_TRUE(Contains(findings[0].reason, "number 0 stands where 6 is due: node records"));
  findings =
      FindingsIn("\xEF\xBB\xBF" + std::string(valid).replace(valid.rfind(",1,"), 3, ",0.5,"));
  ASSERT_EQ(findings.size(), 1U) << "a byte order mark is ignored";
  EXPECT_TRUE(Contains(findings[0].reason, "0.5: a whole number is expected"))
      << findings[0].reason;
  findings = FindingsIn(std::string(valid).insert(valid.find("1,0,0\r\n"), "1\r\n"));
  ASSERT_EQ(findings.size(), 1U) << "an extra cell: records after it are not checked";
  EXPECT_EQ(findings[0].line, 14);
  EXPECT_TRUE(Contains(findings[0].reason, "missing or too many")) << findings[0].reason;
  findings = FindingsIn(ModelFileText(test::Plate(2, 3, 0.5F, 7)));
  EXPECT_TRUE(Contains(findings[3].reason, "and 3 more like this: the state is none of"));
}

}  // namespace
}  // namespace quillane
