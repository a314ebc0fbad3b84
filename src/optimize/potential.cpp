#include "optimize/potential.h"

#include "model/numbers.h"

namespace quillane {
namespace {

void UpdateIncrement(Model& model) {
  model.PotentialIncrement =
      ToSingle(double{model.Lambda * 10.0F / 5.0F}, "the potential increment Lambda * 10 / 5");
}

void Forget(Model& model) {
  const double kept = double{1.0F - model.Lambda};
  for (double& potential : model.Potential.Raw()) {
    potential = Finite(kept * potential, "a cell's potential");
  }
}

void Feed(Model& model) {
  const auto isOver = [&model](int i, int j) {
    return ToSingle(model.CellStress(i, j), "a cell's stress") > model.StressTarget;
  };
  const double increment = double{model.PotentialIncrement};
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      // CellStress has a margin of one cell, so every cell has four neighbours.
      const int fed =
          isOver(i, j) + isOver(i, j + 1) + isOver(i, j - 1) + isOver(i + 1, j) + isOver(i - 1, j);
      for (int k = 0; k < fed; ++k) model.Potential(i, j) += increment;
    }
  }
}

void Decide(Model& model) {
  const double threshold = model.Epsilon;
  for (int j = 1; j <= model.CellColumnCount; ++j) {
    for (int i = 1; i <= model.CellRowCount; ++i) {
      Integer& state = model.CellState(i, j);
      if (state != kCellDesign && state != kCellEmpty) continue;
      state = model.Potential(i, j) < threshold ? kCellEmpty : kCellDesign;
    }
  }
}

}  // namespace

void InitPotential(Model& model) {
  UpdateIncrement(model);
  ForEachPresentCell(model, [&model](int i, int j, int) {
    const Single saturated =
        Finite(model.PotentialIncrement * 5.0F / model.Lambda, "the saturated potential",
               model.Lambda == 0 ? ErrorCause::kLambdaZero : ErrorCause::kNone);
    model.Potential(i, j) = double{saturated};
  });
}

void UpdatePotential(Model& model) {
  UpdateIncrement(model);
  Forget(model);
  Feed(model);
  Decide(model);
}

}  // namespace quillane
