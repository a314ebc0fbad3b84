// Which loads have a way to supports that hold them.
#include "fem/load_paths.h"

#include <gtest/gtest.h>

#include "support/plates.h"

namespace quillane {
namespace {

using Nodes = std::vector<int>;

TEST(LostLoads, AWayLeadsOverEdgesAndNotOverCorners) {
  Model model = test::Cantilever(2, 4);
  const int tip = test::Node(model, 2, 5);
  EXPECT_EQ(LostLoads(model), Nodes{});
  model.CellState(1, 3) = kCellCutOut;
  EXPECT_EQ(LostLoads(model), Nodes{}) << "the upper row still reaches the wall";
  model.CellState(2, 4) = kCellEmpty;
  EXPECT_EQ(LostLoads(model), Nodes{tip}) << "cells (2, 3) and (1, 4) touch at a corner only";
  model.CellState(1, 4) = kCellEmpty;
  model.NodeLoad(1, 1) = 5;
  EXPECT_EQ(LostLoads(model), Nodes{tip}) << "no material at all there; node 1 is at the wall";
}

TEST(LostLoads, APieceIsHeldAgainstMovingAndTurning) {
  const struct {
    const char* what;
    struct {
      int row, column, d;
    } supports[3];
    bool held;
  } cases[] = {
      {"a pin and a roller", {{1, 1, 1}, {1, 1, 2}, {1, 5, 2}}, true},
      {"two nodes in x above each other, one in y", {{1, 1, 1}, {3, 1, 1}, {1, 1, 2}}, true},
      {"free in x", {{1, 1, 2}, {1, 3, 2}, {1, 5, 2}}, false},
      {"free in y", {{1, 1, 1}, {3, 1, 1}, {2, 5, 1}}, false},
      {"turns about the crossing of x and y", {{1, 1, 1}, {1, 5, 1}, {3, 2, 2}}, false},
  };
  for (const auto& c : cases) {
    Model model = test::Plate(2, 4);
    for (const auto& [row, column, d] : c.supports) {
      model.NodeFreedom(test::Node(model, row, column), d) = 1;
    }
    model.NodeLoad(test::Node(model, 3, 4), 2) = -1;
    EXPECT_EQ(LostLoads(model).empty(), c.held) << c.what;
  }
}

}  // namespace
}  // namespace quillane
