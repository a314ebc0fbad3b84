// Presses snapped to nodes and cells.
#include "model/grid_pick.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/plates.h"

namespace quillane {
namespace {

/// Seven columns and five rows, x from -4 to 3 cells, y from -3 to 2 cells.
Model Sample(Single elementSize) {
  Model model = test::Plate(5, 7, elementSize);
  model.DomainX1 = -4 * elementSize, model.DomainX2 = 3 * elementSize;
  model.DomainY1 = -3 * elementSize, model.DomainY2 = 2 * elementSize;
  return model;
}

TEST(GridPick, PressesSnapToLinesNodesAndCells) {
  EXPECT_EQ(NearestGridLine(150, 100), 200);
  EXPECT_EQ(NearestGridLine(-150, 100), -100);
  EXPECT_EQ(NearestGridLine(-150.1F, 100), -200);
  const Model model = Sample(100);
  EXPECT_EQ(NodeAt(model, 249, 151), 47);
  EXPECT_EQ(NodeAt(model, -449, -349), 1);
  EXPECT_EQ(NodeAt(model, 351, 0), std::nullopt);
  EXPECT_EQ(CellAt(model, -400, -300), (CellIndex{1, 1}));
  EXPECT_EQ(CellAt(model, 299, 199), (CellIndex{5, 7}));
  EXPECT_EQ(CellAt(model, 300, 0), std::nullopt);
  EXPECT_EQ(CellAt(model, -400.1F, 0), std::nullopt);
  EXPECT_EQ(CellOffsetAt(model, 300, 200), (CellIndex{5, 7}));
  EXPECT_EQ(CellOffsetAt(model, 400, 200), std::nullopt);
  EXPECT_EQ(NodeAt(Model{}, 0, 0), std::nullopt) << "no domain yet";
  EXPECT_EQ(NearestGridLine(1, 0), std::nullopt);
  EXPECT_EQ(NodeAt(model, std::numeric_limits<Single>::infinity(), 0), std::nullopt);
}

TEST(GridPick, EdgesReadFromAFileAreTheSameLines) {
  // Products of an inexact cell size and seven written digits differ in the last place.
  Model model = Sample(33.3F);
  model.DomainX1 = std::nextafter(model.DomainX1, 0.0F);
  model.DomainX2 = std::nextafter(model.DomainX2, 0.0F);
  model.DomainY2 = std::nextafter(model.DomainY2, 1000.0F);
  EXPECT_EQ(NodeAt(model, -133, -99), 1);
  EXPECT_EQ(NodeAt(model, 100, -99), 8);
  EXPECT_EQ(CellAt(model, -133, 66), (CellIndex{5, 1}));
  EXPECT_EQ(CellAt(model, -133, 67), std::nullopt) << "no row above the last";
}

}  // namespace
}  // namespace quillane
