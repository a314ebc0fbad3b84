#include "optimize/potential.h"

#include <algorithm>
#include <cstdint>
#include <vector>

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
  // CellStress has a margin of one cell, so every cell has four neighbours.
  const auto stress = model.CellStress.Raw();
  std::vector<std::uint8_t> isOver(stress.size());
  std::ranges::transform(stress, isOver.begin(), [&model](double value) {
    return ToSingle(value, "a cell's stress") > model.StressTarget;
  });
  const std::size_t right = model.CellStress.First().Size();
  const double increment = double{model.PotentialIncrement};
  for (int j = 1; j <= model.CellColumnCount; ++j) {
    static_cast<void>(
        model.CellStress(model.CellRowCount + 1, j + 1));  // throws where it is too small
    const std::uint8_t* own = &isOver[static_cast<std::size_t>(j) * right];
    for (double& potential : model.Potential.Column(j, model.CellRowCount)) {
      ++own;
      const int fed = own[0] + own[1] + own[right] + *(own - 1) + *(own - right);
      for (int k = 0; k < fed; ++k) potential += increment;
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
