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
  constexpr int kSizes[][2] = {{7680, 4320}, {4320, 7680}, {1280, 720},
                               {1, 1},       {0, 0},       {9999999, 9}};
  for (const LabelFont font : {LabelFont{17, 7}, LabelFont{12, 9}, LabelFont{60, 20}}) {
    for (const auto& [width, height] : kSizes) {
      const CanvasLayout layout = LayOutClientArea(width, height, font);
      EXPECT_GE(layout.labelHeight, font.lineHeight) << width << " x " << height;
      EXPECT_GE(layout.upDateWidth, 60 * font.averageWidth - 1);
      EXPECT_GE(std::min({layout.canvasWidth, layout.canvasHeight, layout.colorBarWidth}), 1);
      EXPECT_EQ(layout.canvasWidth + layout.colorBarWidth, std::max(width, 2));
      EXPECT_LE(layout.labelTop, std::max(height - layout.labelHeight, 1));
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
}

}  // namespace
}  // namespace quillane
