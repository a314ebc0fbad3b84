// The potential rule, case by case.
#include "optimize/potential.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "model/run_time_error.h"
#include "support/plates.h"

namespace quillane {
namespace {

/// A 3 x 3 plate with saturated potentials and the given rule.
Model Ruled(Single lambda, Integer epsilon) {
  Model model = test::Plate(3, 3);
  model.Lambda = lambda, model.Epsilon = epsilon, model.StressTarget = 100;
  InitPotential(model);
  return model;
}

TEST(Potential, DecaysAndIsFedByTheCellAndItsFourNeighbours) {
  Model model = Ruled(0.5F, 5);
  model.CellStress(2, 2) = 100.00001;   // above the target as a Single
  model.CellStress(1, 1) = 100;         // equal to the target feeds nothing
  model.CellStress(3, 3) = 100.000001;  // equal to it once it is a Single
  UpdatePotential(model);
  const double expected[3][3] = {{5, 6, 5}, {6, 6, 6}, {5, 6, 5}};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      EXPECT_EQ(model.Potential(i, j), expected[i - 1][j - 1]) << i << j;
      model.CellStress(i, j) = 500, model.Potential(i, j) = 10;
    }
  }
  EXPECT_EQ(model.CellState(1, 1), kCellDesign) << "equal to the threshold keeps the material";
  UpdatePotential(model);
  EXPECT_EQ(model.Potential(2, 2), 10) << "fed from all five sides it stays saturated";
  EXPECT_EQ(model.Potential(1, 1), 8) << "the border never feeds";
}

TEST(Potential, ChangesDesignCellsOnlyAndRegrowsThem) {
  Model model = Ruled(0.5F, 9);
  model.CellState(1, 1) = kCellNonDesign, model.CellState(1, 2) = kCellCutOut;
  UpdatePotential(model);
  EXPECT_EQ(model.CellState(1, 1), kCellNonDesign);
  EXPECT_EQ(model.CellState(1, 2), kCellCutOut);
  EXPECT_EQ(model.CellState(2, 2), kCellEmpty);
  model.Potential(2, 2) = 19;
  UpdatePotential(model);
  EXPECT_EQ(model.CellState(2, 2), kCellDesign);
}

TEST(Potential, LambdaAtItsLimits) {
  Model model = Ruled(0.05F, 1);
  model.Lambda = 0;
  EXPECT_THROW(InitPotential(model), RunTimeError);
  UpdatePotential(model);  // nothing is forgotten, nothing fed
  EXPECT_NEAR(model.Potential(1, 1), 10, 1e-5);
  std::ranges::fill(model.CellState.Raw(), kCellEmpty);
  EXPECT_NO_THROW(InitPotential(model));  // no occupied cell, no division
  model.Lambda = std::numeric_limits<Single>::max();
  EXPECT_THROW(UpdatePotential(model), RunTimeError);
}

}  // namespace
}  // namespace quillane
