// The shares of the client area and the view.
#include "display/canvas_layout.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "display/grid.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

TEST(CanvasLayout, LengthsFollowFromRoundedLengths) {
  const LayoutUnits units = LayOutUnits(8085, 1350);
  EXPECT_EQ(units.canvasHeight, 1050);
  EXPECT_EQ(units.labelTop, 1120);
  EXPECT_EQ(units.colorBarWidth, 275);
  EXPECT_EQ(units.canvasWidth, 7810);
  EXPECT_EQ(LayOutUnits(8085, 1350.5).canvasHeight, 1050) << "halves to even";
  EXPECT_EQ(LayOutUnits(8085, 1351.6).colorBarWidth, 276) << "of 1052; of 1051.6 it were 275";
  EXPECT_THROW(LayOutUnits(40000, 1000), RunTimeError);
}

TEST(CanvasLayout, EveryScreenFitsAndNoLabelIsClipped) {
  struct Size {
    int width, height;
  };
  for (const LabelFont font : {LabelFont{17, 7}, LabelFont{12, 9}, LabelFont{60, 20}}) {
    for (const auto& [width, height] :
         {Size{7680, 4320}, Size{4320, 7680}, Size{1280, 720}, Size{400, 300}, Size{1, 1},
          Size{0, 0}, Size{3, 7680}, Size{1000000, 10}}) {
      const CanvasLayout layout = LayOutClientArea(width, height, font);
      EXPECT_GE(layout.labelHeight, font.lineHeight) << width << " x " << height;
      EXPECT_GE(layout.upDateWidth, 60 * font.averageWidth - 1);
      EXPECT_GE(layout.mouseXYLeft, layout.upDateWidth);
      EXPECT_GE(layout.canvasWidth, 1);
      EXPECT_GE(layout.canvasHeight, 1);
      EXPECT_GE(layout.colorBarWidth, 1);
      EXPECT_EQ(layout.canvasWidth + layout.colorBarWidth, std::max(width, 2));
      EXPECT_LE(layout.labelTop + layout.labelHeight, std::max(height, 70 + layout.labelHeight));
    }
  }
}

TEST(CanvasLayout, ViewKeepsTheOriginsFractionsAndTheAspect) {
  Model model;
  model.DomainWidth = 1000;
  FitView(model, 300, 200);
  EXPECT_FLOAT_EQ(model.DomainHeight, 666.66669F);
  const UserScale scale = CanvasScale(model);
  EXPECT_DOUBLE_EQ(scale.left, -500);
  EXPECT_DOUBLE_EQ(scale.right, 500);
  EXPECT_NEAR(scale.bottom, -333.333, 1e-3);
  model.DomainWidth = 3e38F;
  EXPECT_THROW(FitView(model, 1, 1000), RunTimeError);
}

}  // namespace
}  // namespace quillane
