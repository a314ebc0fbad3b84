// Levels, labels and layers of the result maps.
#include "display/result_maps.h"

#include <gtest/gtest.h>

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

struct Map {
  explicit Map(Model model, decltype(&DrawStressMap) draw = DrawStressMap) {
    FitView(model, 800, 600);
    draw(canvas, legend, model, kTable);
  }

  std::string Label(int level) const {  // drawn last, level by level
    return legend.calls[legend.calls.size() - 17 + static_cast<std::size_t>(level)].text;
  }

  RecordingArea canvas, legend;
};

/// The level of a single cell whose stress is given on a scale from 0 to 15, levels of width 1.
int LevelOfStress(double stress) {
  Model model = test::Plate(1, 1);
  model.MaxStress = 15;
  model.CellStress(1, 1) = stress;
  const Map map(model);
  int level = 1;
  while (map.canvas.Count(Shape::kFill, LevelColor(kTable, level)) == 0) ++level;
  return level;
}

TEST(ResultMaps, AValueTakesTheLowestLevelThatReachesIt) {
  EXPECT_EQ(LevelOfStress(0), 1);
  EXPECT_EQ(LevelOfStress(0.001), 2);
  EXPECT_EQ(LevelOfStress(1 + 1e-12), 2) << "compared in single precision";
  EXPECT_EQ(LevelOfStress(14.001), 16);
  EXPECT_EQ(LevelOfStress(15), 16);
  EXPECT_THROW(LevelOfStress(15.001), RunTimeError);
  for (const double largest : {1.0 / 3, 1e-30, 123456.789, 3e38, 1e-320}) {
    Model model = test::Plate(1, 2);
    model.MinStress = model.CellStress(1, 1) = largest / 7;
    model.MaxStress = model.CellStress(1, 2) = largest;
    EXPECT_NO_THROW(Map{model}) << largest;
  }
}

TEST(ResultMaps, LegendRunsFromSmallestToLargest) {
  Model model = test::Plate(1, 2);
  model.MinStress = model.CellStress(1, 1) = model.CellStress(1, 2) = 10;
  model.MaxStress = 160;
  const Map map(model);
  EXPECT_EQ(map.legend.calls[1].text, "stress(MPa)");
  EXPECT_EQ(map.Label(1), "1.00E+01");
  EXPECT_EQ(map.Label(2), "2.00E+01");
  EXPECT_EQ(map.Label(16), "1.60E+02");
  EXPECT_EQ(map.legend.Scale(), (UserScale{-0.5, 17, 5, -1}));
  EXPECT_DOUBLE_EQ(map.legend.calls.back().y1, 16);
  EXPECT_EQ(map.legend.calls[2].color, (Color{0, 63, 252})) << "blue is lowest";
  EXPECT_EQ(map.legend.calls[32].color, (Color{252, 63, 0}));

  model.MaxStress = 10;
  const Map flat(model);
  EXPECT_EQ(flat.canvas.Count(Shape::kFill, LevelColor(kTable, 1)), 2);
  EXPECT_EQ(flat.Label(1) + flat.Label(8) + flat.Label(16), "1.00E+011.00E+011.00E+01");
}

TEST(ResultMaps, PotentialScaleIncludesZeroWhateverTheCells) {
  Model model = test::Plate(1, 2);
  model.Potential(1, 1) = 4;
  model.Potential(1, 2) = 7.5;
  model.CellState(1, 2) = kCellEmpty;
  const Map map(model, DrawNeuronMap);
  EXPECT_EQ(map.legend.calls[1].text, "Potential");
  EXPECT_EQ(map.Label(1), "0.00E+00");
  EXPECT_EQ(map.Label(16), "7.50E+00") << "the empty cell counts for the scale";
  EXPECT_EQ(map.canvas.Count(Shape::kFill, LevelColor(kTable, 9)), 1) << "4 = 8 * 0.5";
}

TEST(ResultMaps, ColoursLieOverTheGridAndUnderTheSymbols) {
  Model model = test::Cantilever(2, 2);
  model.MaxStress = model.CellStress(1, 1) = model.CellStress(2, 1) = 15;
  model.CellState(2, 1) = kCellEmpty;  // lost its material, keeps its stress
  model.CellState(1, 2) = kCellCutOut;
  const Map map(model);
  EXPECT_EQ(map.canvas.Colors([](const DrawCall&) { return true; }),
            (std::vector{kWhite, kBackground, kCyan, kRed, LevelColor(kTable, 16),
                         LevelColor(kTable, 1), kMagenta, kBlue}));
  EXPECT_EQ(map.canvas.Count(Shape::kFill, LevelColor(kTable, 16)), 1);
  EXPECT_EQ(map.canvas.Count(Shape::kOutline, kCyan), 1) << "the cut-out cell";
}

}  // namespace
}  // namespace quillane
