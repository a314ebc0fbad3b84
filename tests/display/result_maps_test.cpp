// Levels, labels and layers of the result maps.
#include "display/result_maps.h"

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

const ColorTable kTable = MakeColorTable();

struct Drawn {
  RecordingArea canvas;
  RecordingArea legend;

  std::vector<std::string> Labels() const {
    std::vector<std::string> labels;
    for (const DrawCall& text : legend.Of(Shape::kText, kBlue)) labels.push_back(text.text);
    return labels;
  }
};

Drawn StressMap(Model model) {
  FitView(model, 800, 600);
  Drawn drawn;
  DrawStressMap(drawn.canvas, drawn.legend, model, kTable);
  return drawn;
}

/// The level of a single cell whose stress is given on a scale from 0 to 15, levels of width 1.
int LevelOfStress(double stress) {
  Model model = test::Plate(1, 1);
  model.MaxStress = 15;
  model.CellStress(1, 1) = stress;
  const Drawn drawn = StressMap(model);
  for (int level = 1; level <= kLevelCount; ++level) {
    if (!drawn.canvas.Of(Shape::kFill, LevelColor(kTable, level)).empty()) return level;
  }
  return 0;
}

TEST(ColorScale, RampHasItsEndsAndItsTurn) {
  EXPECT_EQ(LevelColor(kTable, 1), (Color{0, 63, 252}));
  EXPECT_EQ(LevelColor(kTable, 8), (Color{0, 252, 63}));
  EXPECT_EQ(LevelColor(kTable, 9), (Color{63, 252, 0}));
  EXPECT_EQ(LevelColor(kTable, 16), (Color{252, 63, 0}));
}

TEST(ResultMaps, AValueTakesTheLowestLevelThatReachesIt) {
  EXPECT_EQ(LevelOfStress(0), 1);
  EXPECT_EQ(LevelOfStress(0.001), 2);
  EXPECT_EQ(LevelOfStress(1), 2);
  EXPECT_EQ(LevelOfStress(1 + 1e-12), 2) << "compared in single precision";
  EXPECT_EQ(LevelOfStress(13.5), 15);
  EXPECT_EQ(LevelOfStress(14.001), 16);
  EXPECT_EQ(LevelOfStress(15), 16);
  EXPECT_THROW(LevelOfStress(15.001), RunTimeError);
}

TEST(ResultMaps, TheExtremesOfAnyFieldFindALevel) {
  for (const double largest : {1.0 / 3, 0.1, 1e-30, 123456.789, 3e38, 1e-320}) {
    Model model = test::Plate(1, 3);
    model.MinStress = model.CellStress(1, 1) = largest / 7;
    model.MaxStress = model.CellStress(1, 2) = largest;
    model.CellStress(1, 3) = largest * (1 - 1e-16);
    EXPECT_NO_THROW(StressMap(model)) << largest;
  }
}

TEST(ResultMaps, LegendRunsFromSmallestToLargest) {
  Model model = test::Plate(1, 1);
  model.MinStress = model.CellStress(1, 1) = 10;
  model.MaxStress = 160;
  const Drawn drawn = StressMap(model);
  const std::vector<std::string> labels = drawn.Labels();
  ASSERT_EQ(labels.size(), 17U);
  EXPECT_EQ(labels[0], "stress(MPa)");
  EXPECT_EQ(labels[1], "1.00E+01");
  EXPECT_EQ(labels[2], "2.00E+01");
  EXPECT_EQ(labels[16], "1.60E+02");
  EXPECT_EQ(drawn.legend.Scale(), (UserScale{-0.5, 17, 5, -1}));
  EXPECT_DOUBLE_EQ(drawn.legend.calls.back().y1, 16);
}

TEST(ResultMaps, AFieldOfOneValueIsAllLevelOne) {
  Model model = test::Plate(1, 2);
  model.MinStress = model.MaxStress = model.CellStress(1, 1) = model.CellStress(1, 2) = 1.0 / 3;
  const Drawn drawn = StressMap(model);
  EXPECT_EQ(drawn.canvas.Of(Shape::kFill, LevelColor(kTable, 1)).size(), 2U);
  const std::vector<std::string> labels = drawn.Labels();
  EXPECT_EQ(std::count(labels.begin(), labels.end(), "3.33E-01"), 16);
}

TEST(ResultMaps, PotentialScaleIncludesZeroWhateverTheCells) {
  Model model = test::Plate(1, 2);
  FitView(model, 800, 600);
  model.Potential(1, 1) = 4;
  model.Potential(1, 2) = 7.5;
  model.CellState(1, 2) = kCellEmpty;
  Drawn drawn;
  DrawNeuronMap(drawn.canvas, drawn.legend, model, kTable);
  EXPECT_EQ(drawn.Labels().front(), "Potential");
  EXPECT_EQ(drawn.Labels()[1], "0.00E+00");
  EXPECT_EQ(drawn.Labels()[16], "7.50E+00") << "the empty cell counts for the scale";
  EXPECT_EQ(drawn.canvas.Of(Shape::kFill, LevelColor(kTable, 9)).size(), 1U);  // 4 <= 8 * 0.5
}

TEST(ResultMaps, ColoursLieOverTheGridAndUnderTheSymbols) {
  Model model = test::Cantilever(2, 2);
  model.MaxStress = model.CellStress(1, 1) = model.CellStress(2, 1) = 15;
  model.CellState(2, 1) = kCellEmpty;  // lost its material, keeps its stress
  model.CellState(1, 2) = kCellCutOut;
  const Drawn drawn = StressMap(model);
  EXPECT_EQ(drawn.canvas.calls.front().color, kWhite);
  const std::vector<DrawCall>& calls = drawn.canvas.calls;
  std::vector<Color> order;  // of the layers, each once
  for (const DrawCall& call : calls) {
    if (std::find(order.begin(), order.end(), call.color) == order.end()) {
      order.push_back(call.color);
    }
  }
  EXPECT_EQ(order, (std::vector{kWhite, kBackground, kCyan, kRed, LevelColor(kTable, 16),
                                LevelColor(kTable, 1), kMagenta, kBlue}));
  EXPECT_EQ(drawn.canvas.Of(Shape::kFill, LevelColor(kTable, 16)).size(), 1U);
  EXPECT_EQ(drawn.canvas.Of(Shape::kOutline, kCyan).size(), 1U) << "the cut-out cell";
}

}  // namespace
}  // namespace quillane
