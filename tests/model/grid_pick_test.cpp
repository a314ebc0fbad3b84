// Presses snapped to nodes and cells.
#include "model/grid_pick.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// Seven columns and five rows of 100, x from -400 to 300, y from -300 to 200.
Model Sample() {
  Model model = test::Plate(5, 7);
  model.DomainX1 = -400;
  model.DomainX2 = 300;
  model.DomainY1 = -300;
  model.DomainY2 = 200;
  return model;
}

TEST(GridPick, LinesSnapUpwardsAtHalves) {
  EXPECT_EQ(NearestGridLine(149.9F, 100), 100);
  EXPECT_EQ(NearestGridLine(150, 100), 200);
  EXPECT_EQ(NearestGridLine(-150, 100), -100);
  EXPECT_EQ(NearestGridLine(-150.1F, 100), -200);
  EXPECT_EQ(CellEdge(-0.1F, 100), -100);
  EXPECT_EQ(CellEdge(100, 100), 100);
}

TEST(GridPick, NodesBelongToTheDomainWithItsEdges) {
  const Model model = Sample();
  EXPECT_EQ(NodeAt(model, 249, 151), 47);
  EXPECT_EQ(NodeAt(model, -449, -349), 1);
  EXPECT_EQ(NodeAt(model, 351, 0), std::nullopt);
  EXPECT_EQ(NodeAt(model, 0, -351), std::nullopt);
}

TEST(GridPick, CellsStopShortOfTheUpperEdges) {
  const Model model = Sample();
  EXPECT_EQ(CellAt(model, -400, -300), (CellIndex{1, 1}));
  EXPECT_EQ(CellAt(model, 299, 199), (CellIndex{5, 7}));
  EXPECT_EQ(CellAt(model, 300, 0), std::nullopt);
  EXPECT_EQ(CellAt(model, 0, 200), std::nullopt);
  EXPECT_EQ(CellAt(model, -400.1F, 0), std::nullopt);
  EXPECT_EQ(CellOffsetAt(model, 300, 200), (CellIndex{5, 7}));
  EXPECT_EQ(CellOffsetAt(model, 400, 200), std::nullopt);
}

TEST(GridPick, EdgesReadFromAFileAreTheSameLines) {
  // Products of an inexact cell size and seven written digits differ in the last place.
  Model model = Sample();
  model.ElementSize = 33.3F;
  model.DomainX1 = std::nextafter(-4 * 33.3F, 0.0F);
  model.DomainX2 = std::nextafter(3 * 33.3F, 0.0F);
  model.DomainY1 = model.DomainX1;
  model.DomainY2 = std::nextafter(3 * 33.3F, 1000.0F);
  EXPECT_EQ(NodeAt(model, -133, -133), 1);
  EXPECT_EQ(NodeAt(model, 100, -133), 8);
  EXPECT_EQ(CellAt(model, -133, 99), (CellIndex{7, 1}));
  EXPECT_EQ(CellAt(model, -133, 100.5F), std::nullopt) << "no row above the last";
}

TEST(GridPick, NoPressOrSizeIsUndefined) {
  Model model = Sample();
  const Single huge = std::numeric_limits<Single>::max();
  for (const Single size : {0.0F, -1.0F, 1e-38F, 1e38F, huge}) {
    model.ElementSize = size;
    for (const Single x : {0.0F, 1.0F, -huge, huge, std::numeric_limits<Single>::infinity()}) {
      try {
        NodeAt(model, x, 0);
        CellAt(model, 0, x);
        CellOffsetAt(model, x, x);
      } catch (const RunTimeError&) {
      }
    }
  }
  EXPECT_THROW(NearestGridLine(1, 0), RunTimeError);
  EXPECT_EQ(NodeAt(Model{}, 0, 0), std::nullopt);
}

}  // namespace
}  // namespace quillane
