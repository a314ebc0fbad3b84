// Mesh layout, active nodes and equation numbers.
#include "fem/mesh.h"

#include <gtest/gtest.h>

#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

TEST(Mesh, LaysOutTheGridCounterClockwiseFromTheLowerLeft) {
  Model model;
  model.DomainX1 = -400, model.DomainY1 = -300;
  BuildMesh(model, 5, 7);
  EXPECT_EQ(model.NodeCount, 48);
  EXPECT_EQ(model.NodeXY(1, 1), -400);
  EXPECT_EQ(model.NodeXY(8, 1), 300);
  EXPECT_EQ(model.NodeXY(9, 2), -200);
  const int nodes[] = {1, 2, 10, 9};
  for (int k = 1; k <= 4; ++k) EXPECT_EQ(model.ElementNodes(1, k), nodes[k - 1]);
  EXPECT_EQ(model.ElementNodes(35, 3), 48);

  model = Model{};
  model.ElementSize = 0.1F;
  BuildMesh(model, 1, 20);
  Single x = 0;
  for (int j = 1; j <= 21; ++j, x += 0.1F) EXPECT_EQ(model.NodeXY(j, 1), double{x});
  EXPECT_NE(model.NodeXY(21, 1), 2.0) << "a sum in single precision, not twenty times a tenth";
}

TEST(Mesh, NumbersFreeComponentsOfActiveNodesWithoutGaps) {
  Model model = test::Plate(2, 2);
  model.CellState(2, 2) = kCellEmpty;  // node 9 belongs to this cell alone
  model.NodeFreedom(1, 1) = 1;
  model.NodeFreedom(2, 2) = -5;  // any code but 0 is fixed
  MarkActiveNodes(model);
  NumberEquations(model);
  EXPECT_EQ(model.EquationCount, 14);
  const int expected[][2] = {{0, 1}, {2, 0}, {3, 4}};
  for (int k = 1; k <= 3; ++k) {
    for (int d = 1; d <= 2; ++d) EXPECT_EQ(model.DofNumber(k, d), expected[k - 1][d - 1]);
  }
  EXPECT_EQ(model.DofNumber(9, 1), 0);
  EXPECT_EQ(model.ElementDofs(4, 1), model.DofNumber(5, 1));  // filled though the cell is absent
}

TEST(Mesh, RefusesWhatAnIntegerCannotCount) {
  Model model;
  EXPECT_THROW(BuildMesh(model, 200, 200), RunTimeError);  // 40401 nodes
  EXPECT_THROW(BuildMesh(model, 32767, 1), RunTimeError);
  EXPECT_EQ(model.NodeCount, 0);
  model = test::Plate(127, 254);  // 32640 nodes, 65280 components
  EXPECT_THROW(NumberEquations(model), RunTimeError);
}

}  // namespace
}  // namespace quillane
