// What stops an analysis, and with what words.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "fem/analysis.h"
#include "fem/mesh.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::Node;

TEST(Failures, EachStopsAtItsStatementInPlainWords) {
  const struct {
    const char* reason;  // a piece of message or advice
    ErrorKind kind;
    std::function<void(Model&)> damage;
  } cases[] = {
      {"No load reaches", ErrorKind::kFloatingPoint,
       [](Model& m) { m.NodeLoad(Node(m, 3, 7), 2) = 0; }},
      {"No load reaches", ErrorKind::kFloatingPoint,  // too small a force: its square is zero
       [](Model& m) { m.NodeLoad(Node(m, 3, 7), 2) = 1e-200; }},
      {"No node can move", ErrorKind::kFloatingPoint,
       [](Model& m) {
         for (Integer& state : m.CellState.Raw()) state = kCellEmpty;
       }},
      {"No node can move", ErrorKind::kFloatingPoint,
       [](Model& m) {
         for (Integer& flag : m.NodeFreedom.Raw()) flag = 1;
       }},
      {"Poisson's ratio", ErrorKind::kFloatingPoint, [](Model& m) { m.PoissonRatio = 1; }},
      {"Poisson's ratio", ErrorKind::kFloatingPoint, [](Model& m) { m.PoissonRatio = -1; }},
      {"plate stiffness", ErrorKind::kFloatingPoint,
       [](Model& m) { m.YoungModulus = 1.7e308, m.PoissonRatio = 0.9; }},
      {"preconditioned residual", ErrorKind::kFloatingPoint,
       [](Model& m) { m.NodeLoad(Node(m, 3, 7), 2) = 1e200; }},
      {"stress", ErrorKind::kFloatingPoint, [](Model& m) { m.ElementSize = 0; }},
      {"ElementDofs(25, 1)", ErrorKind::kSubscript, [](Model& m) { m.ElementCount = 25; }},
      {"NodeActive(-7)", ErrorKind::kSubscript, [](Model& m) { m.ElementNodes(3, 2) = -7; }},
      {"NodeXY", ErrorKind::kSubscript,
       [](Model& m) {
         m.NodeXY.ReDim({0, 3}, {1, 2});
         (void)m.NodeXY(9, 1);
       }},
  };
  for (const auto& c : cases) {
    Model model = test::Cantilever(4, 6);
    try {
      c.damage(model);
      MarkActiveNodes(model);
      AnalyseStructure(model);
      ADD_FAILURE() << "analysed: " << c.reason;
    } catch (const RunTimeError& error) {
      EXPECT_EQ(error.Kind(), c.kind) << error.what();
      EXPECT_NE((error.what() + error.Advice()).find(c.reason), std::string::npos)
          << error.what() << error.Advice();
    }
  }
}

}  // namespace
}  // namespace quillane
