// The layout of the client area; what canvas and maps show, where and in what order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "display/canvas_drawing.h"
#include "display/canvas_layout.h"
#include "display/drawing_area.h"
#include "display/palette.h"
#include "display/read_outs.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

enum class Shape { kClear, kLine, kOutline, kFill, kCircle, kText };

struct DrawCall {
  Shape shape{};
  double x1, y1, x2, y2;  // circle: centre, radius in x2
  Color color;
  int width = 1;
  std::string text = {};
};

/// A drawing area that records what was drawn since it was cleared.
class RecordingArea : public DrawingArea {
 public:
  void SetScale(const UserScale& scale) override { scale_ = scale; }
  UserScale Scale() const override { return scale_; }
  void SetBackground(Color color) override { background_ = color; }
  void Clear() override { calls = {{Shape::kClear, 0, 0, 0, 0, background_}}; }
  void SetColor(Color color) override { color_ = color; }
  void SetLineWidth(int pixels) override { width_ = pixels; }
  void DrawLine(double a, double b, double c, double d) override { Add(Shape::kLine, a, b, c, d); }
  void DrawBox(double a, double b, double c, double d) override {
    Add(Shape::kOutline, a, b, c, d);
  }
  void FillBox(double a, double b, double c, double d) override { Add(Shape::kFill, a, b, c, d); }
  void DrawCircle(double x, double y, double r) override { Add(Shape::kCircle, x, y, r, 0); }
  void SetTextSize(double, double, std::string_view) override {}
  void DrawText(double x, double y, std::string_view text) override {
    Add(Shape::kText, x, y, 0, 0, text);
  }

  int Count(Shape shape, Color color) const {
    return static_cast<int>(std::ranges::count_if(
        calls, [&](const DrawCall& call) { return call.shape == shape && call.color == color; }));
  }

  /// Returns whether a line was drawn from the first point to the second.
  bool HasLine(Color color, int width, double x1, double y1, double x2, double y2) const {
    return std::ranges::any_of(calls, [&](const DrawCall& call) {
      const auto near = [](double a, double b) { return std::fabs(a - b) < 1e-4; };
      return call.shape == Shape::kLine && call.color == color && call.width == width &&
             near(call.x1, x1) && near(call.y1, y1) && near(call.x2, x2) && near(call.y2, y2);
    });
  }

  /// Return the text that starts at y, and the colour of the filled box whose lower edge is at y.
  std::string TextAt(double y) const { return At(Shape::kText, y).text; }
  Color FillAt(double y) const { return At(Shape::kFill, y).color; }

  /// Returns the colours in the order of their first use, of filled boxes only or of everything.
  std::vector<Color> Colors(bool filledOnly) const {
    std::vector<Color> colors;
    for (const DrawCall& call : calls) {
      if (filledOnly && call.shape != Shape::kFill) continue;
      if (std::ranges::count(colors, call.color) == 0) colors.push_back(call.color);
    }
    return colors;
  }

  std::vector<DrawCall> calls;

 private:
  DrawCall At(Shape shape, double y) const {
    const auto isThere = [&](const DrawCall& call) { return call.shape == shape && call.y1 == y; };
    const auto found = std::ranges::find_if(calls, isThere);
    return found == calls.end() ? DrawCall{} : *found;
  }

  void Add(Shape shape, double a, double b, double c, double d, std::string_view text = {}) {
    calls.push_back({shape, a, b, c, d, color_, width_, std::string(text)});
  }

  UserScale scale_;
  Color background_, color_;
  int width_ = 1;
};

/// Fits the view to a 4 : 3 canvas; at the initial width x from -1000 to 1000, y from -750 to 750.
Model InView(Model model) {
  FitView(model, 800, 600);
  return model;
}

TEST(CanvasLayout, LengthsFollowFromRoundedLengthsOnEveryScreen) {
  const LayoutUnits units = LayOutUnits(8085, 1350);
  EXPECT_EQ((std::vector{units.canvasHeight, units.labelTop, units.colorBarWidth}),
            (std::vector<Integer>{1050, 1120, 275}));
  EXPECT_EQ(LayOutUnits(8085, 1351.6).colorBarWidth, 276) << "1051.6 is rounded first";
  EXPECT_THROW(LayOutUnits(40000, 1000), RunTimeError);

  // Every screen fits and no label is clipped.
  constexpr int kSizes[][2] = {{7680, 4320}, {4320, 7680}, {0, 0}, {9999999, 9}};
  for (const LabelFont font : {LabelFont{12, 9}, LabelFont{60, 20}}) {
    for (const auto& [width, height] : kSizes) {
      const CanvasLayout layout = LayOutClientArea(width, height, font);
      EXPECT_GE(layout.labelHeight, font.lineHeight) << width << " x " << height;
      EXPECT_GE(layout.upDateWidth, std::min(60 * font.averageWidth - 1, 1.0 * width));
      EXPECT_GE(std::min({layout.canvasWidth, layout.canvasHeight, layout.colorBarWidth}), 1);
      EXPECT_EQ(layout.canvasWidth + layout.colorBarWidth, std::max(width, 2));
    }
  }
}

TEST(CanvasDrawing, DrawsCellsStateByStateAndTheGridLast) {
  Model model = InView(test::Plate(2, 2));
  model.CellState(1, 1) = kCellCutOut;
  model.CellState(1, 2) = kCellNonDesign;
  model.CellState(2, 1) = kCellEmpty;
  model.NodeFreedom(1, 1) = 1;
  model.NodeLoad(1, 2) = 1;
  RecordingArea canvas;
  DrawCanvas(canvas, model);
  EXPECT_EQ(canvas.calls.front().color, kBackground);
  EXPECT_EQ(canvas.Colors(true), (std::vector{kWhite, kLightGreen, kLightCyan, kBackground}));
  EXPECT_EQ(canvas.Count(Shape::kOutline, kCyan), 3) << "the cut-out cell keeps its outline";
  EXPECT_EQ(canvas.Count(Shape::kLine, kCyan), 10 + 10 + 8 + 8) << "7.5 rounds to 8";
  EXPECT_EQ(canvas.Count(Shape::kLine, kMagenta), 8) << "the first node's arrow and dot";
  EXPECT_EQ(canvas.Count(Shape::kLine, kBlue), 4);
  EXPECT_EQ(canvas.calls.back().color, kCyan) << "the grid lies over the supports";
}

TEST(CanvasDrawing, ArrowsFollowTheForceAndSupportsStandLeftAndBelow) {
  Model model = InView(test::Plate(1, 1));
  model.DomainWidth = 3000;  // arrows of 100, supports of 30
  model.NodeLoad(2, 1) = -1e6;
  model.NodeLoad(4, 2) = 0.001;
  model.NodeFreedom(4, 1) = model.NodeFreedom(4, 2) = 1;
  model.NodeFreedom(1, 1) = model.NodeFreedom(1, 2) = 2;
  RecordingArea canvas;
  DrawLoads(canvas, model);
  DrawSupports(canvas, model);
  EXPECT_EQ(canvas.Count(Shape::kLine, kMagenta), 16);
  EXPECT_EQ(canvas.Count(Shape::kLine, kBlue), 8) << "code 2 holds the node and has no symbol";
  const struct {
    Color color;
    double x1, y1, x2, y2;
  } lines[] = {{kMagenta, 0, 0, 100.0 / 3, 20},
               {kMagenta, 0, 0, 100.0 / 3, -20},
               {kMagenta, 100, 0, 100, 0},  // a dot for the missing component
               {kMagenta, 100, 200, 80, 200 - 100.0 / 3},
               {kBlue, 100, 100, 70, 115},
               {kBlue, 60, 85, 60, 115},
               {kBlue, 115, 70, 100, 100},
               {kBlue, 85, 60, 115, 60}};
  for (const auto& [color, x1, y1, x2, y2] : lines) {
    const int width = color == kMagenta ? 2 : 1;
    EXPECT_TRUE(canvas.HasLine(color, width, x1, y1, x2, y2)) << x1 << ' ' << y1 << ' ' << y2;
  }
}

TEST(CanvasDrawing, AnEmptyOrClearedCanvasShowsAxesAndGridOnly) {
  RecordingArea canvas, legend;
  Model model = InView(Model{});
  model.ViewRight = -500;  // x from -2500 to -500
  DrawCanvas(canvas, model);
  EXPECT_EQ(canvas.Count(Shape::kLine, kCyan), 25 + 16) << "no lines right of the origin";
  model.ElementSize = 66.7F;
  DrawCanvas(canvas, model);
  EXPECT_TRUE(std::ranges::any_of(canvas.calls, [](const DrawCall& call) {
    return call.color == kCyan && call.x1 == double{-31.0F * 66.7F};  // in single precision
  }));
  picCanvasClear(canvas, legend, InView(test::Cantilever(2, 2)));
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

struct Map {
  explicit Map(Model model, decltype(&DrawStressMap) draw = DrawStressMap,
               const DrawingStyle& style = {}) {
    FitView(model, 800, 600);
    draw(canvas, legend, model, style);
  }

  RecordingArea canvas, legend;
};

TEST(ResultMaps, AValueTakesTheLowestLevelThatReachesIt) {
  Model cell = test::Plate(1, 1);
  cell.MaxStress = 15;  // levels of width 1; compared in single precision
  for (const auto& [stress, level] :
       {std::pair{0.0, 1}, std::pair{0.001, 2}, std::pair{1 + 1e-12, 2}, std::pair{15.0, 16}}) {
    cell.CellStress(1, 1) = stress;
    EXPECT_EQ(Map(cell).canvas.Count(Shape::kFill, LevelColor(level)), 1) << stress;
  }
  cell.CellStress(1, 1) = 15.001;
  EXPECT_THROW(Map{cell}, RunTimeError);
  for (const double largest : {1.0 / 3, 1e-30, 3e38, 1e-320}) {
    Model model = test::Plate(1, 2);
    model.MinStress = model.CellStress(1, 1) = largest / 7;
    model.MaxStress = model.CellStress(1, 2) = largest;
    EXPECT_NO_THROW(Map{model}) << largest;
  }
}

TEST(ResultMaps, LegendRunsFromSmallestToLargestOrFromZeroForPotentials) {
  Model model = test::Plate(1, 2);
  model.MinStress = model.CellStress(1, 1) = model.CellStress(1, 2) = 10;
  model.MaxStress = 160;
  const Map map(model);
  EXPECT_EQ(map.legend.TextAt(16.8), "stress(MPa)");
  EXPECT_EQ(map.legend.TextAt(1), "1.00E+01");
  EXPECT_EQ(map.legend.TextAt(16), "1.60E+02");
  EXPECT_EQ(map.legend.Scale(), (UserScale{-0.5, 17, 5, -1}));
  EXPECT_EQ(map.legend.FillAt(0), (Color{0, 63, 252})) << "blue is lowest";
  EXPECT_EQ(map.legend.FillAt(7), (Color{0, 252, 63}));
  EXPECT_EQ(map.legend.FillAt(8), (Color{63, 252, 0}));
  EXPECT_EQ(map.legend.FillAt(15), (Color{252, 63, 0}));

  model.MaxStress = 10;
  const Map flat(model);
  EXPECT_EQ(flat.canvas.Count(Shape::kFill, LevelColor(1)), 2);
  EXPECT_EQ(flat.legend.TextAt(1) + flat.legend.TextAt(16), "1.00E+011.00E+01");

  for (const int empty : {1, 2}) {
    model = test::Plate(1, 2);
    model.Potential(1, 3 - empty) = 4;
    model.Potential(1, empty) = 7.5;
    model.CellState(1, empty) = kCellEmpty;
    const Map potentials(model, DrawNeuronMap);
    EXPECT_EQ(potentials.legend.TextAt(16.8), "Potential");
    EXPECT_EQ(potentials.legend.TextAt(1), "0.00E+00");
    EXPECT_EQ(potentials.legend.TextAt(16), "7.50E+00") << "the scale includes the empty cell";
    EXPECT_EQ(potentials.canvas.Count(Shape::kFill, LevelColor(9)), 1) << "4 = 8 * 0.5";
  }
}

TEST(ResultMaps, ARangeOfItsOwnHoldsWhateverTheValues) {
  Model model = test::Plate(1, 3);
  model.CellStress(1, 1) = 5, model.CellStress(1, 2) = 30, model.CellStress(1, 3) = 90;
  model.MinStress = 5, model.MaxStress = 90;
  const Map map(model, DrawStressMap, {.grid = false, .range = ValueRange{10, 40}});
  EXPECT_EQ(map.legend.TextAt(1) + map.legend.TextAt(16), "1.00E+014.00E+01");
  for (const int level : {1, 11, 16}) {
    EXPECT_EQ(map.canvas.Count(Shape::kFill, LevelColor(level)), 1) << level;
  }
  EXPECT_EQ(map.canvas.Count(Shape::kLine, kRed) + map.canvas.Count(Shape::kLine, kCyan), 0);
}

TEST(ResultMaps, ColoursLieOverTheGridAndUnderTheSymbols) {
  Model model = test::Cantilever(2, 2);
  model.MaxStress = model.CellStress(1, 1) = model.CellStress(2, 1) = 15;
  model.CellState(2, 1) = kCellEmpty;  // emptied, but keeps its stress
  model.CellState(1, 2) = kCellCutOut;
  const Map map(model);
  EXPECT_EQ(map.canvas.Colors(false), (std::vector{kWhite, kBackground, kCyan, kRed, LevelColor(16),
                                                   LevelColor(1), kMagenta, kBlue}));
  EXPECT_EQ(map.canvas.Count(Shape::kFill, LevelColor(16)), 1);
  EXPECT_EQ(map.canvas.Count(Shape::kOutline, kCyan), 1) << "the cut-out cell";
}

TEST(ReadOuts, TellValuesOfTheNearestNodeOrOfTheCellCountedFromZero) {
  Model model = test::Plate(2, 3);
  model.NodeLoad(6, 2) = -0.5;  // grid row 2, column 2
  model.NodeDisp(6, 2) = -0.25;
  model.CellStress(2, 3) = 7;
  model.Potential(1, 2) = 3.5;
  EXPECT_EQ(loadValue(model, 149.9F, 50), "Px = 0N  Py = -0.5N");
  EXPECT_EQ(dispValue(model, 50, 149), "u = 0mm  v = -0.25mm");
  EXPECT_EQ(dispValue(Model{}, 0, 0), std::nullopt) << "no domain yet";
  EXPECT_EQ(neuronValue(model, 250, 150), "1,2   Potential = 3.5") << "of row 1, column 2";
  EXPECT_EQ(stressValue(model, 250, 50), "0,2   stress = 0MPa") << "the border";
  EXPECT_THROW(neuronValue(model, 250, 50), RunTimeError);
  EXPECT_EQ(stressValue(model, 300, 200), "2,3   stress = 7MPa") << "the upper right corner";
  EXPECT_EQ(neuronValue(model, 300, 200), "2,3   Potential = 0");
  EXPECT_EQ(stressValue(model, 400, 150), std::nullopt);
  model.ElementSize = 10;
  EXPECT_EQ(stressValue(model, 250, 150), std::nullopt) << "the grid no longer fits the cells";
  EXPECT_EQ(neuronValue(model, 250, 150), std::nullopt);
  model.ElementSize = 100;
  EXPECT_EQ(neuronValue(model, -0.1F, 50), std::nullopt);
}

}  // namespace
}  // namespace quillane
