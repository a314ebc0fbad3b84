#include "optimize/vote.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "model/numbers.h"

namespace quillane {
namespace {

constexpr double kSameStress = 5e-5;  ///< relative; stresses this close count as equal

/// The number of the five positions whose stress must be above the target for a cell to stay when
/// all has been forgotten.
int VotesToStay(Integer epsilon) { return (epsilon + 1) / 2; }

/// Steps at the targets steps t, ..., 2 t, t.
struct Series {
  Single lambda;
  Integer epsilon;
  int steps;
};

/// Returns the t above which the cell leaves or stays away; 0 where it does at any, `always` where
/// it stays at any.
double StaysUpTo(const Model& model, int row, int column, const Series& series, double always) {
  const bool present = model.CellState(row, column) == kCellDesign;
  const double keeps = 1 - double{series.lambda};
  double missing = series.epsilon - 1e-6 -
                   std::pow(keeps, series.steps) * (present ? 10 : model.Potential(row, column));
  if (missing <= 0) return always;
  struct Position {
    double stress, upTo, added;  // feeds the potential where t is below upTo: stress / s
    int s;
  };
  std::array<Position, 5> positions;
  std::ranges::transform(
      std::array{model.CellStress(row, column), model.CellStress(row + 1, column),
                 model.CellStress(row - 1, column), model.CellStress(row, column + 1),
                 model.CellStress(row, column - 1)},
      positions.begin(), [&series](double stress) {
        const double single = double{static_cast<Single>(stress)};
        return Position{single, single, 2 * double{series.lambda}, 1};
      });
  for (;;) {
    Position& next = *std::ranges::max_element(positions, {}, &Position::upTo);
    if (next.upTo <= 0) return 0;
    missing -= next.added;
    if (missing <= 0) return next.upTo;
    next.upTo = next.s < series.steps ? next.stress / ++next.s : 0;
    next.added *= keeps;
  }
}

/// For every cell that can leave or come: StaysUpTo. Descending.
std::vector<double> StayingTargets(const Model& model, const Series& series) {
  std::vector<double> targets;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const Integer state = model.CellState(i, j);
      if (state != kCellDesign && state != kCellEmpty) continue;
      targets.push_back(StaysUpTo(model, i, j, series, model.MaxStress));
    }
  }
  std::ranges::sort(targets, std::greater());
  return targets;
}

}  // namespace

void Prescribe(const Stage& stage, Model& model) {
  model.StressTarget = stage.stressTarget;
  model.Epsilon = stage.epsilon;
  model.Lambda = stage.lambda;
}

int VoteSteps(Single lambda, Integer epsilon) {
  if (lambda >= 1) return 1;
  const double forgets = std::log1p(-double{lambda});
  const double loses = 2.0 * (VotesToStay(epsilon) - 1), wins = 2.0 * VotesToStay(epsilon);
  const double out = std::log((epsilon - loses) / (10 - loses)) / forgets;
  const double in = wins > epsilon ? std::log(1 - epsilon / wins) / forgets : 0;
  const double steps = std::floor(std::max(out, in) + 1e-6) + 1;
  return steps < std::numeric_limits<int>::max() ? static_cast<int>(steps)
                                                 : std::numeric_limits<int>::max();
}

std::vector<Single> TargetsThatKeep(const Model& model, Single lambda, Integer epsilon, int steps,
                                    int cells) {
  std::vector<Single> targets(static_cast<std::size_t>(steps), 0);
  const std::vector<double> stays = StayingTargets(model, {lambda, epsilon, steps});
  const auto others = std::ranges::count(model.CellState.Raw(), kCellNonDesign);
  const auto first = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, cells - others));
  if (first >= stays.size() || stays[first] <= 0) return targets;
  const double lowest = stays[first];
  const double unit = std::pow(10.0, std::floor(std::log10(lowest)) - 3);
  double target = std::ceil(lowest / unit) * unit;
  const auto splits = [&stays](double value) {
    const auto below = std::ranges::lower_bound(stays, value * (1 + kSameStress), std::greater());
    return below != stays.end() && *below > value * (1 - kSameStress);
  };
  for (int tries = 0; tries < 20 && splits(target); ++tries) target += unit;
  for (int step = 0; step < steps; ++step) {
    targets[static_cast<std::size_t>(step)] =
        ToSingle(std::round(target / unit) * (steps - step) * unit, "the stress target");
  }
  return targets;
}

std::vector<Stage> StagesOf(const Vote& vote, Single lambda, int cells, const Model& model) {
  if (vote.lambda == 0) {
    const Single target = TargetsThatKeep(model, 1, vote.epsilon, 1, cells).front();
    return {{true, target, vote.epsilon, lambda, VoteSteps(lambda, vote.epsilon)}};
  }
  std::vector<Stage> stages;
  double unfed = 10;  // the potential of a present cell that no step has fed
  for (const Single target :
       TargetsThatKeep(model, vote.lambda, vote.epsilon, vote.targets, cells)) {
    unfed *= 1 - double{vote.lambda};
    const Integer keepsAll = std::min(vote.epsilon, static_cast<Integer>(unfed));
    stages.push_back({stages.empty(), target, keepsAll, vote.lambda, 1});
  }
  stages.back().epsilon = vote.epsilon;
  return stages;
}

}  // namespace quillane
