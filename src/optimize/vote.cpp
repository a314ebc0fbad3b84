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

constexpr double kSameStress = 1e-5;  ///< relative; stresses this close count as equal

/// The number of the five positions whose stress must be above the target for a cell to stay when
/// all has been forgotten.
int VotesToStay(Integer epsilon) { return (epsilon + 1) / 2; }

/// The same for one step: 0 or less where the cell's potential suffices, above 5 where it cannot.
int VotesToStay(const Model& model, int row, int column, Single lambda, Integer epsilon) {
  const bool present = model.CellState(row, column) == kCellDesign;
  const double kept = (1 - double{lambda}) * (present ? 10 : model.Potential(row, column));
  return static_cast<int>(std::ceil((epsilon - kept) / (2 * double{lambda}) - 1e-6));
}

/// For every cell that can leave or come: the stress above which it stays. Descending.
std::vector<Single> StayingStresses(const Model& model, Single lambda, Integer epsilon) {
  std::vector<Single> stresses;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const Integer state = model.CellState(i, j);
      if (state != kCellDesign && state != kCellEmpty) continue;
      const auto at = [&model](int row, int column) {
        return static_cast<Single>(model.CellStress(row, column));
      };
      std::array positions = {at(i, j), at(i + 1, j), at(i - 1, j), at(i, j + 1), at(i, j - 1)};
      std::ranges::sort(positions, std::greater());
      const int votes = VotesToStay(model, i, j, lambda, epsilon);
      stresses.push_back(votes > 5   ? 0
                         : votes < 1 ? static_cast<Single>(model.MaxStress)
                                     : positions[static_cast<std::size_t>(votes) - 1]);
    }
  }
  std::ranges::sort(stresses, std::greater());
  return stresses;
}

}  // namespace

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

Single TargetThatKeeps(const Model& model, Single lambda, Integer epsilon, int cells) {
  const std::vector<Single> stays = StayingStresses(model, lambda, epsilon);
  const auto others = std::ranges::count(model.CellState.Raw(), kCellNonDesign);
  const auto first = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, cells - others));
  if (first >= stays.size() || stays[first] <= 0) return 0;
  const double lowest = double{stays[first]};
  const double unit = std::pow(10.0, std::floor(std::log10(lowest)) - 3);
  double target = std::ceil(lowest / unit) * unit;
  const auto splits = [&stays](double value) {
    const auto below = std::ranges::lower_bound(stays, value * (1 + kSameStress), std::greater(),
                                                [](Single stay) { return double{stay}; });
    return below != stays.end() && double{*below} > value * (1 - kSameStress);
  };
  for (int tries = 0; tries < 20 && splits(target); ++tries) target += unit;
  return ToSingle(std::round(target / unit) * unit, "the stress target");
}

}  // namespace quillane
