// What the canvas drawing puts on the canvas, where and in what order.
#include "display/canvas_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "display/canvas_layout.h"
#include "display/palette.h"
#include "model/run_time_error.h"
#include "recording_area.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::DrawCall;
using test::RecordingArea;
using test::Shape;

/// The end of a line as an offset from a node at (x, y).
::testing::AssertionResult Runs(const DrawCall& line, double x1, double y1, double x2, double y2) {
  const double far = std::max({std::abs(line.x1 - x1), std::abs(line.y1 - y1),
                               std::abs(line.x2 - x2), std::abs(line.y2 - y2)});
  if (far < 1e-4) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << "line from " << line.x1 << ", " << line.y1 << " to " << line.x2 << ", " << line.y2;
}

Model View(Model model) {
  FitView(model, 800, 600);
  return model;
}

std::vector<Color> FillColors(const RecordingArea& canvas) {
  std::vector<Color> colors;
  for (const DrawCall& call : canvas.calls) {
    if (call.shape == Shape::kFill) colors.push_back(call.color);
  }
  return colors;
}

TEST(CanvasDrawing, DrawsCellsStateByStateAndTheGridLast) {
  Model model = View(test::Plate(2, 2));
  model.CellState(1, 1) = kCellCutOut;
  model.CellState(1, 2) = kCellNonDesign;
  model.CellState(2, 1) = kCellEmpty;
  model.NodeFreedom(1, 1) = 1;
  RecordingArea canvas;
  DrawCanvas(canvas, model);

  EXPECT_EQ(canvas.calls.front().color, kBackground);
  EXPECT_EQ(FillColors(canvas), (std::vector{kWhite, kLightGreen, kLightCyan, kBackground}));
  const std::vector<DrawCall> outlines = canvas.Of(Shape::kOutline, kCyan);
  ASSERT_EQ(outlines.size(), 3U);
  EXPECT_TRUE(Runs(outlines[0], 100, 100, 200, 200)) << "the design cell in row 2, column 2";
  EXPECT_TRUE(Runs(outlines[2], 0, 0, 100, 100)) << "the cut-out cell keeps its outline";

  // Left to x = -1000 and right to 1000 in steps of 100; up and down to 750.
  EXPECT_EQ(canvas.Of(Shape::kLine, kCyan).size(), 10U + 10 + 8 + 8);  // 7.5 rounds to 8
  EXPECT_EQ(canvas.calls.back().color, kCyan) << "the grid lies over the supports";
  EXPECT_EQ(canvas.Of(Shape::kLine, kRed).size(), 2U);
}

TEST(CanvasDrawing, ArrowsShowOnlyTheDirectionOfAForce) {
  Model model = View(test::Plate(1, 1));
  model.DomainWidth = 3000;  // arrows of 100
  model.NodeLoad(2, 1) = -1e6;
  model.NodeLoad(4, 2) = 0.001;  // node 4 at (100, 100), node 3 at (0, 100)
  RecordingArea canvas;
  DrawLoads(canvas, model);
  ASSERT_EQ(canvas.calls.size(), 16U);
  EXPECT_EQ(canvas.calls[0].width, 2);
  EXPECT_EQ(canvas.calls[0].color, kMagenta);
  EXPECT_TRUE(Runs(canvas.calls[0], 100, 0, 0, 0)) << "to the left, length 100";
  EXPECT_TRUE(Runs(canvas.calls[1], 0, 0, 100.0 / 3, -20));
  EXPECT_TRUE(Runs(canvas.calls[3], 0, 0, 100.0 / 3, 20));
  for (std::size_t i = 4; i < 8; ++i) EXPECT_TRUE(Runs(canvas.calls[i], 100, 0, 100, 0)) << "a dot";
  EXPECT_TRUE(Runs(canvas.calls[12], 100, 100, 100, 200)) << "upwards, as long";
  EXPECT_TRUE(Runs(canvas.calls[13], 100, 200, 120, 200 - 100.0 / 3));
  EXPECT_TRUE(Runs(canvas.calls[15], 100, 200, 80, 200 - 100.0 / 3));
}

TEST(CanvasDrawing, SupportsStandLeftAndBelow) {
  Model model = View(test::Plate(1, 1));
  model.DomainWidth = 600;  // symbols of 6
  model.NodeFreedom(4, 1) = model.NodeFreedom(4, 2) = 1;
  RecordingArea canvas;
  DrawSupports(canvas, model);
  ASSERT_EQ(canvas.calls.size(), 8U);
  EXPECT_EQ(canvas.calls[0].color, kBlue);
  EXPECT_TRUE(Runs(canvas.calls[1], 94, 103, 94, 97)) << "opens to the left";
  EXPECT_TRUE(Runs(canvas.calls[3], 92, 97, 92, 103)) << "its ground line";
  EXPECT_TRUE(Runs(canvas.calls[5], 97, 94, 103, 94)) << "opens below";
  EXPECT_TRUE(Runs(canvas.calls[7], 97, 92, 103, 92));
}

TEST(CanvasDrawing, WithoutADomainOnlyAxesAndGrid) {
  RecordingArea canvas;
  DrawCanvas(canvas, View(Model{}));
  EXPECT_TRUE(FillColors(canvas).empty());
  EXPECT_EQ(canvas.calls.size(), 1U + 2 + 36);

  Model moved = View(Model{});
  moved.ViewRight = -500;  // the origin right of the canvas: x from -2500 to -500
  DrawCanvas(canvas, moved);
  EXPECT_EQ(canvas.Of(Shape::kLine, kCyan).size(), 25U + 16) << "no lines right of the origin";
}

TEST(CanvasDrawing, ClearingLeavesAnUnlabelledLegendAndTheModel) {
  Model model = View(test::Cantilever(2, 2));
  RecordingArea canvas;
  RecordingArea legend;
  picCanvasClear(canvas, legend, model, MakeColorTable());
  EXPECT_TRUE(FillColors(canvas).empty());
  EXPECT_TRUE(canvas.Of(Shape::kLine, kMagenta).empty());
  EXPECT_EQ(legend.Of(Shape::kText, kBlue).size(), 1U);
  EXPECT_EQ(model.CellState(1, 1), kCellDesign);
}

TEST(CanvasDrawing, WhatCannotBeDrawnIsARunTimeError) {
  RecordingArea canvas;
  for (const Single size : {0.0F, 1e-30F, 0.02F}) {
    Model model = View(Model{});
    model.ElementSize = size;
    EXPECT_THROW(DrawCanvas(canvas, model), RunTimeError) << size;
    EXPECT_FALSE(GridIsDrawable(size, CanvasScale(model))) << size;
  }
  EXPECT_TRUE(GridIsDrawable(0.05F, CanvasScale(View(Model{}))));
  EXPECT_FALSE(GridIsDrawable(-1, CanvasScale(View(Model{}))));

  Model torn = View(test::Plate(2, 2));
  torn.CellColumnCount = 3;
  EXPECT_THROW(DrawCanvas(canvas, torn), RunTimeError);
  torn = View(test::Plate(2, 2));
  torn.ElementNodes(4, 3) = 10;
  EXPECT_THROW(DrawCanvas(canvas, torn), RunTimeError);
}

}  // namespace
}  // namespace quillane
