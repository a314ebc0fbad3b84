// How the client area is shared out, and what the canvas drawing draws, where and in what order.
#include "display/canvas_drawing.h"

#include <gtest/gtest.h>

#include "display/canvas_layout.h"
#include "display/palette.h"
#include "model/run_time_error.h"
#include "recording_area.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::RecordingArea;
using test::Shape;

/// On a canvas of 4 : 3, with the start-up width x from -1000 to 1000 and y from -750 to 750.
Model InView(Model model) {
  FitView(model, 800, 600);
  return model;
}

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
  constexpr int kSizes[][2] = {{7680, 4320}, {4320, 7680}, {1280, 720}, {0, 0}, {9999999, 9}};
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

TEST(CanvasDrawing, DrawsCellsStateByStateAndTheGridLast) {
  Model model = InView(test::Plate(2, 2));
  model.CellState(1, 1) = kCellCutOut;
  model.CellState(1, 2) = kCellNonDesign;
  model.CellState(2, 1) = kCellEmpty;
  model.NodeFreedom(1, 1) = 1;
  RecordingArea canvas;
  DrawCanvas(canvas, model);
  EXPECT_EQ(canvas.calls.front().color, kBackground);
  EXPECT_EQ(canvas.Colors(true), (std::vector{kWhite, kLightGreen, kLightCyan, kBackground}));
  EXPECT_EQ(canvas.Count(Shape::kOutline, kCyan), 3) << "the cut-out cell keeps its outline";
  EXPECT_EQ(canvas.Count(Shape::kLine, kCyan), 10 + 10 + 8 + 8) << "7.5 rounds to 8";
  EXPECT_EQ(canvas.calls.back().color, kCyan) << "the grid lies over the supports";
}

TEST(CanvasDrawing, ArrowsFollowTheForceAndSupportsStandLeftAndBelow) {
  Model model = InView(test::Plate(1, 1));
  model.DomainWidth = 3000;  // arrows of 100, supports of 30
  model.NodeLoad(2, 1) = -1e6;
  model.NodeLoad(4, 2) = 0.001;
  model.NodeFreedom(4, 1) = model.NodeFreedom(4, 2) = 1;
  RecordingArea canvas;
  DrawLoads(canvas, model);
  DrawSupports(canvas, model);
  ASSERT_EQ(canvas.calls.size(), 16U + 8);
  EXPECT_EQ(canvas.calls[0].width, 2);
  const struct {
    std::size_t call;
    double x1, y1, x2, y2;
  } ends[] = {{0, 100, 0, 0, 0},        {1, 0, 0, 100.0 / 3, -20},
              {3, 0, 0, 100.0 / 3, 20}, {4, 100, 0, 100, 0},  // a dot for the missing component
              {12, 100, 100, 100, 200}, {13, 100, 200, 120, 200 - 100.0 / 3},
              {17, 70, 115, 70, 85},    {19, 60, 85, 60, 115},
              {21, 85, 70, 115, 70},    {23, 85, 60, 115, 60}};
  for (const auto& [index, x1, y1, x2, y2] : ends) {
    const test::DrawCall& call = canvas.calls[index];
    EXPECT_NEAR(call.x1, x1, 1e-4) << index;
    EXPECT_NEAR(call.y1, y1, 1e-4) << index;
    EXPECT_NEAR(call.x2, x2, 1e-4) << index;
    EXPECT_NEAR(call.y2, y2, 1e-4) << index;
  }
}

TEST(CanvasDrawing, AnEmptyOrClearedCanvasShowsAxesAndGridOnly) {
  RecordingArea canvas, legend;
  Model model = InView(Model{});
  model.ViewRight = -500;  // x from -2500 to -500
  DrawCanvas(canvas, model);
  EXPECT_EQ(canvas.Count(Shape::kLine, kCyan), 25 + 16) << "no lines right of the origin";
  picCanvasClear(canvas, legend, InView(test::Cantilever(2, 2)), MakeColorTable());
  EXPECT_EQ(canvas.calls.size(), 1U + 2 + 36);
  EXPECT_EQ(legend.Count(Shape::kText, kBlue), 1);
}

TEST(CanvasDrawing, WhatCannotBeDrawnIsARunTimeError) {
  RecordingArea canvas;
  Model model = InView(test::Plate(2, 2));
  for (const Single size : {0.0F, 1e-30F, 0.02F}) {
    model.ElementSize = size;
    EXPECT_THROW(DrawCanvas(canvas, model), RunTimeError) << size;
    EXPECT_FALSE(GridIsDrawable(size, CanvasScale(model))) << size;
  }
  EXPECT_TRUE(GridIsDrawable(0.05F, CanvasScale(model)));
  EXPECT_FALSE(GridIsDrawable(-1, CanvasScale(model)));
  model.ElementSize = 100;
  model.ElementNodes(4, 3) = 10;
  EXPECT_THROW(DrawCanvas(canvas, model), RunTimeError);
}

}  // namespace
}  // namespace quillane
