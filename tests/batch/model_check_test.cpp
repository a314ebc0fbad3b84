// What --check finds in a model that something was done to.
#include "batch/model_check.h"

#include <gtest/gtest.h>

#include <functional>

#include "batch/model_input.h"
#include "batch/program.h"

namespace quillane {
namespace {

TEST(ModelCheck, NamesLineAndReasonOfWhatIsHardlyMeant) {
  // 2 x 3 cells, 12 nodes, 6 elements: cells from line 7, nodes 13, elements 25, supports 31,
  // loads 43, parameters 55.
  const struct {
    const char* what;
    std::function<void(Model&)> spoil;
    int line;
    const char* words;
  } cases[] = {
      {"whole", [](Model&) {}, 0, ""},
      {"cells", [](Model& m) { m.ElementSize = 0; }, 1, "size of the cells"},
      {"corner", [](Model& m) { m.DomainX2 = 400; }, 3, "2 rows and 3 columns of cells of 100 mm"},
      {"modulus", [](Model& m) { m.YoungModulus = -1; }, 5, "Young's modulus"},
      {"ratio", [](Model& m) { m.PoissonRatio = 1; }, 5, "Poisson's ratio"},
      {"state", [](Model& m) { m.CellState(2, 1) = 4; }, 10, "cell (2, 1) has state 4"},
      {"node", [](Model& m) { m.NodeXY(2, 1) = 77; }, 14, "node 2 at (77, 0) instead of (100, 0)"},
      {"clockwise",
       [](Model& m) {
         for (int k = 1; k <= 4; ++k) m.ElementNodes(2, k) = m.ElementNodes(1, k);
       },
       26, "its nodes are not those"},
      {"clockwise", [](Model& m) { std::swap(m.ElementNodes(2, 2), m.ElementNodes(2, 4)); }, 26,
       "element 2: its nodes run clockwise"},
      {"twice", [](Model& m) { m.ElementNodes(6, 1) = m.ElementNodes(6, 2); }, 30, "twice"},
      {"nowhere", [](Model& m) { m.ElementNodes(1, 1) = 13; }, 25, "a node that is not there"},
      {"free",
       [](Model& m) {
         m.NodeFreedom.ReDim({0, 12}, {1, 2});
       },
       31, "is held"},
      {"hinge",
       [](Model& m) {
         for (const int node : {5, 9}) m.NodeFreedom(node, 1) = m.NodeFreedom(node, 2) = 0;
       },
       50, "node 8: the plate under this load is not held"},
      {"unloaded",
       [](Model& m) {
         m.NodeLoad.ReDim({0, 12}, {1, 2});
       },
       43, "no node has a load"},
      {"absent", [](Model& m) { m.CellState(1, 3) = m.CellState(2, 3) = 0; }, 50,
       "node 8: its load acts where no cell holds material"},
      {"Lambda", [](Model& m) { m.Lambda = 0; }, 55, "Lambda is not above 0"},
      {"empty",
       [](Model& m) {
         for (Integer& c : m.CellState.Raw()) c = 0;
       },
       7, "no cell holds"},
      {"equations", [](Model& m) { m = test::Cantilever(127, 254); }, 2, "number of equations"},
  };
  for (const auto& c : cases) {
    Model model = test::Cantilever(2, 3);
    c.spoil(model);
    const std::vector<Finding> findings = CheckModelText(ModelFileText(model));
    if (c.line == 0) {
      EXPECT_TRUE(findings.empty());
      continue;
    }
    const bool found = std::any_of(findings.begin(), findings.end(), [&c](const Finding& f) {
      return f.line == c.line && Contains(f.reason, c.words);
    });
    EXPECT_TRUE(found) << c.what << (findings.empty() ? "" : ": " + findings.front().reason);
  }
}

TEST(ModelCheck, ReadsTheTextItself) {
  const std::string valid = ModelFileText(test::Cantilever(2, 3));
  EXPECT_EQ(ModelFromText(valid).DomainDefined, kTrue) << "pictures show the domain";
  EXPECT_TRUE(CheckModelText(valid + "\r\n  \n").empty()) << "blank lines do no harm";
  std::vector<Finding> findings = CheckModelText(valid + "9,9\r\n");
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].line, 56);
  findings = CheckModelText(valid.substr(0, 40));
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_TRUE(Contains(findings[0].reason, "the file ends where"));
  std::string renumbered = valid;
  for (std::size_t at = 0; (at = renumbered.find(",100,", at)) != std::string::npos;) {
    renumbered.replace(--at, 1, "0");
    at += 4;
  }
  findings = CheckModelText(renumbered);
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_TRUE(Contains(findings[1].reason, "number 0 stands where 6 is due: node records"));
  findings = CheckModelText(ModelFileText(test::Plate(2, 3, 100, 7)));
  EXPECT_TRUE(Contains(findings[3].reason, "and 3 more like this: the state is none of"));
}

}  // namespace
}  // namespace quillane
