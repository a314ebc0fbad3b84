// Levels, labels and layers of the result maps, and the captions of the value read-outs.
#include "display/result_maps.h"

#include <gtest/gtest.h>

#include "display/canvas_layout.h"
#include "display/palette.h"
#include "display/read_outs.h"
#include "model/run_time_error.h"
#include "recording_area.h"
#include "support/plates.h"

namespace quillane {
namespace {

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

  test::RecordingArea canvas, legend;
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
  EXPECT_EQ(LevelOfStress(15), 16);
  EXPECT_THROW(LevelOfStress(15.001), RunTimeError);
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
  EXPECT_EQ(flat.Label(1) + flat.Label(16), "1.00E+011.00E+01");

  model.Potential(1, 1) = 4;
  model.Potential(1, 2) = 7.5;
  model.CellState(1, 2) = kCellEmpty;
  const Map potentials(model, DrawNeuronMap);
  EXPECT_EQ(potentials.legend.calls[1].text, "Potential");
  EXPECT_EQ(potentials.Label(1), "0.00E+00");
  EXPECT_EQ(potentials.Label(16), "7.50E+00") << "the empty cell counts for the scale";
  EXPECT_EQ(potentials.canvas.Count(Shape::kFill, LevelColor(kTable, 9)), 1) << "4 = 8 * 0.5";
}

TEST(ResultMaps, ColoursLieOverTheGridAndUnderTheSymbols) {
  Model model = test::Cantilever(2, 2);
  model.MaxStress = model.CellStress(1, 1) = model.CellStress(2, 1) = 15;
  model.CellState(2, 1) = kCellEmpty;  // lost its material, keeps its stress
  model.CellState(1, 2) = kCellCutOut;
  const Map map(model);
  EXPECT_EQ(map.canvas.Colors(false),
            (std::vector{kWhite, kBackground, kCyan, kRed, LevelColor(kTable, 16),
                         LevelColor(kTable, 1), kMagenta, kBlue}));
  EXPECT_EQ(map.canvas.Count(Shape::kFill, LevelColor(kTable, 16)), 1);
  EXPECT_EQ(map.canvas.Count(Shape::kOutline, kCyan), 1) << "the cut-out cell";
}

TEST(ReadOuts, TellValuesOfTheNearestNodeOrOfTheCellCountedFromZero) {
  Model model = test::Plate(2, 3);
  model.NodeLoad(6, 2) = -0.5;  // grid row 2, column 2
  model.NodeDisp(6, 2) = -0.25;
  model.CellStress(1, 2) = 0.1;
  model.CellStress(2, 3) = 7;
  model.Potential(1, 2) = 3.5;
  EXPECT_EQ(loadValue(model, 149.9F, 50), "Px = 0N  Py = -0.5N");
  EXPECT_EQ(dispValue(model, 50, 149), "u = 0mm  v = -0.25mm");
  EXPECT_EQ(loadValue(model, 351, 0), std::nullopt);
  EXPECT_EQ(dispValue(Model{}, 0, 0), std::nullopt) << "no domain yet";
  EXPECT_EQ(stressValue(model, 250, 150), "1,2   stress = 0.1MPa") << "of row 1, column 2";
  EXPECT_EQ(neuronValue(model, 250, 150), "1,2   Potential = 3.5");
  EXPECT_EQ(stressValue(model, 250, 50), "0,2   stress = 0MPa") << "the border";
  EXPECT_THROW(neuronValue(model, 250, 50), RunTimeError);
  EXPECT_EQ(stressValue(model, 300, 200), "2,3   stress = 7MPa") << "the upper right corner";
  EXPECT_EQ(stressValue(model, 400, 150), std::nullopt);
  EXPECT_EQ(neuronValue(model, -0.1F, 50), std::nullopt);
}

}  // namespace
}  // namespace quillane
