// The density method and the random plates, which the shape benchmark relies on.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "density_method.h"
#include "examples/rectangular_plate.h"
#include "fem/analysis.h"
#include "fem/pieces.h"
#include "random_plates.h"

namespace quillane {
namespace {

/// Held along the left edge, loaded at the middle of the right one.
Model Cantilever(int rows, int columns) {
  RectangularPlate plate(rows, columns, 10);
  for (int row = 1; row <= rows + 1; ++row) plate.Hold(row, 1, true, true);
  plate.Load(rows / 2 + 1, columns + 1, 0, -1000);
  return plate.Result();
}

TEST(DensityMethod, ReachesTheKnownComplianceOfTheHalfMbbBeam) {
  RectangularPlate plate(20, 60, 1);
  for (int row = 1; row <= 21; ++row) plate.Hold(row, 1, true, false);
  plate.Hold(1, 61, false, true);
  plate.Load(21, 1, 0, -1);
  Model model = plate.Result();
  model.YoungModulus = 1;
  DensityMethod method(model, 0.5);
  EXPECT_NEAR(method.Analyse(), 1007.0, 0.1);
  method.Run();
  EXPECT_NEAR(method.Analyse(), 203.3, 0.3);
}

TEST(DensityMethod, AnalysesAFullPlateLikeTheProgram) {
  Model model = Cantilever(9, 14);
  model.CellState(3, 4) = kCellCutOut;
  DensityMethod method(model, 1);
  const double work = method.Analyse();
  Model full = method.BlackAndWhite();
  ASSERT_TRUE(AnalyseStructure(full).converged);
  const int loaded = (9 / 2 + 1) * 15;
  EXPECT_NEAR(work, -1000 * full.NodeDisp(loaded, 2), 1e-4 * work);
}

TEST(DensityMethod, HasTheSensitivitiesOfItsCompliance) {
  DensityMethod method(MakeRandomPlate(1, 9).model, 0.5);
  for (int k = 0; k < 5; ++k) {
    method.Analyse();
    method.Update();
  }
  method.Analyse();
  const std::vector<double> slopes = method.Sensitivities();
  const double steepest = -*std::ranges::min_element(slopes);
  for (std::size_t k = 0; k < slopes.size(); k += 37) {
    constexpr double kStep = 1e-4;
    double& density = method.Densities()[k];
    const double before = density;
    density = before + kStep;
    const double above = method.Analyse();
    density = before - kStep;
    const double below = method.Analyse();
    density = before;
    EXPECT_NEAR(slopes[k], (above - below) / (2 * kStep), 1e-4 * steepest) << k;
  }
}

TEST(DensityMethod, MeetsTheVolumeToTheCellAndKeepsNonDesignCells) {
  for (int number = 1; number <= 8; ++number) {
    const RandomPlate plate = MakeRandomPlate(3, number);
    DensityMethod method(plate.model, plate.wish);
    for (int k = 0; k < 10; ++k) {
      method.Analyse();
      method.Update();
    }
    const Model shape = method.BlackAndWhite();
    const auto isPresent = [](Integer state) { return state > 0; };
    const auto before = std::ranges::count_if(plate.model.CellState.Raw(), isPresent);
    EXPECT_EQ(std::ranges::count_if(shape.CellState.Raw(), isPresent),
              std::lround(plate.wish * static_cast<double>(before)));
    EXPECT_TRUE(std::ranges::equal(
        plate.model.CellState.Raw(), shape.CellState.Raw(),
        [](Integer was, Integer is) { return was == is || was == kCellDesign; }));
  }
}

TEST(RandomPlates, AreWhatTheyPromise) {
  int holes = 0, withoutNonDesign = 0;
  for (int number = 1; number <= 200; ++number) {
    const auto [kind, model, wish] = MakeRandomPlate(7, number);
    EXPECT_TRUE(LostLoads(model).empty()) << number;
    EXPECT_TRUE(wish >= 0.3 && wish <= 0.8) << number;
    const auto& cells = model.CellState.Raw();
    const auto nonDesign = std::ranges::count(cells, kCellNonDesign);
    const auto cutOut = std::ranges::count(cells, kCellCutOut);
    EXPECT_LE(2 * static_cast<double>(nonDesign),
              (wish + 1e-9) * static_cast<double>(std::ranges::ssize(cells) - cutOut))
        << number;
    withoutNonDesign += nonDesign == 0 ? 1 : 0;
    holes += cutOut > 0 && kind != "bracket" ? 1 : 0;
  }
  EXPECT_NEAR(withoutNonDesign, 66, 20);
  EXPECT_GT(holes, 20);
}

}  // namespace
}  // namespace quillane
