#include "random_plates.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>
#include <vector>

#include "examples/rectangular_plate.h"
#include "fem/mesh.h"

namespace quillane {
namespace {

constexpr double kForce = 1000;  ///< N

class RandomNumbers {
 public:
  RandomNumbers(std::uint32_t seed, int number) {
    std::seed_seq sequence{seed, static_cast<std::uint32_t>(number)};
    engine_.seed(sequence);
  }

  /// A whole number from `low` to `high`, both included.
  int Between(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1));
  }
  bool Chance(int percent) { return Between(1, 100) <= percent; }

 private:
  std::mt19937 engine_;
};

/// A plate under way, and where it is held and loaded.
class PlateMaker : public RectangularPlate {
 public:
  PlateMaker(int rowCount, int columnCount, RandomNumbers& numbers)
      : RectangularPlate(rowCount, columnCount, 10),
        rows(rowCount),
        columns(columnCount),
        random(numbers),
        hasNonDesign(!numbers.Chance(33)) {}

  /// Loads a node; its cells become non-design in plates that have such cells.
  void LoadAndKeep(int row, int column, double fx, double fy) {
    Load(row, column, fx, fy);
    NonDesign(row - 1, row, column - 1, column);
  }

  /// Where the plate has non-design cells: makes such of the cells that are there.
  void NonDesign(int r1, int r2, int c1, int c2) {
    if (!hasNonDesign) return;
    for (int i = std::max(r1, 1); i <= std::min(r2, rows); ++i) {
      for (int j = std::max(c1, 1); j <= std::min(c2, columns); ++j) {
        if (HasMaterial(model_, i, j)) model_.CellState(i, j) = kCellNonDesign;
      }
    }
  }

  void HoldRow(int row, int c1, int c2, bool x, bool y) {
    for (int column = c1; column <= c2; ++column) Hold(row, column, x, y);
  }
  void HoldColumn(int column, int r1, int r2, bool x, bool y) {
    for (int row = r1; row <= r2; ++row) Hold(row, column, x, y);
  }

  /// Both lower corners, over a few nodes each; the right one may roll.
  void HoldLowerCorners(bool mayRoll) {
    const int nodes = random.Between(1, 3);
    HoldRow(1, 1, nodes, true, true);
    HoldRow(1, columns + 2 - nodes, columns + 1, !(mayRoll && random.Chance(50)), true);
    if (!random.Chance(50)) return;
    NonDesign(1, 1, 1, nodes);
    NonDesign(1, 1, columns + 1 - nodes, columns);
  }

  /// A round hole that keeps away from every edge, or none where there is no room for it.
  void Drill() {
    constexpr int kClearance = 2;
    const double radius = std::min(rows, columns) * random.Between(12, 22) / 100.0;
    const int margin = static_cast<int>(radius) + kClearance + 1;
    if (2 * margin >= std::min(rows, columns)) return;
    const double x = random.Between(margin, columns - margin);
    const double y = random.Between(margin, rows - margin);
    const Model before = model_;
    Ring(x, y, 0, radius + kClearance, kCellCutOut);
    const bool isFree = std::ranges::equal(
        before.CellState.Raw(), model_.CellState.Raw(),
        [](Integer was, Integer is) { return is != kCellCutOut || was == kCellDesign; });
    model_.CellState = before.CellState;
    if (isFree) Ring(x, y, 0, radius, kCellCutOut);
  }

  const int rows, columns;
  RandomNumbers& random;
  const bool hasNonDesign;
};

void Cantilever(PlateMaker& plate) {
  plate.HoldColumn(1, 1, plate.rows + 1, true, true);
  if (plate.random.Chance(40)) plate.NonDesign(1, plate.rows, 1, 1);
  const bool atMiddle = plate.random.Chance(50);
  const int row = atMiddle ? plate.rows / 2 + 1 : plate.random.Between(1, plate.rows + 1);
  plate.LoadAndKeep(row, plate.columns + 1, 0, -kForce);
}

void HalfBeam(PlateMaker& plate) {
  plate.HoldColumn(1, 1, plate.rows + 1, true, false);
  const int nodes = plate.random.Between(1, 3);
  plate.HoldRow(1, plate.columns + 2 - nodes, plate.columns + 1, false, true);
  plate.NonDesign(1, 1, plate.columns + 1 - nodes, plate.columns);
  plate.LoadAndKeep(plate.rows + 1, 1, 0, -kForce);
}

void Bridge(PlateMaker& plate) {
  plate.HoldLowerCorners(true);
  const int row = plate.random.Chance(60) ? plate.rows + 1 : 1;
  const int pitch = plate.random.Between(2, 6);
  for (int column = 1 + pitch; column <= plate.columns + 1 - pitch; column += pitch) {
    if (plate.Result().NodeFreedom((row - 1) * (plate.columns + 1) + column, 2) != 0) continue;
    plate.LoadAndKeep(row, column, 0, -kForce / 4);
  }
  const int deck = std::clamp(row, 1, plate.rows);
  if (plate.random.Chance(60)) plate.NonDesign(deck, deck, 1, plate.columns);
}

void Arch(PlateMaker& plate) {
  plate.HoldLowerCorners(false);
  const int row = plate.random.Chance(70) ? plate.rows + 1 : plate.rows / 2 + 1;
  plate.LoadAndKeep(row, plate.columns / 2 + 1, 0, -kForce);
}

/// An L: held along the top of its left leg, loaded at the end of the right one.
void CornerBracket(PlateMaker& plate) {
  const int leg = plate.columns * plate.random.Between(30, 50) / 100;
  const int arm = plate.rows * plate.random.Between(30, 50) / 100;
  plate.Cells(arm + 1, plate.rows, leg + 1, plate.columns, kCellCutOut);
  plate.HoldRow(plate.rows + 1, 1, leg + 1, true, true);
  if (plate.random.Chance(40)) plate.NonDesign(plate.rows, plate.rows, 1, leg);
  const int row = plate.random.Chance(50) ? arm + 1 : arm / 2 + 1;
  plate.LoadAndKeep(row, plate.columns + 1, 0, -kForce);
}

void TwoLoads(PlateMaker& plate) {
  const double second = plate.random.Chance(30) ? kForce : -kForce;
  if (plate.random.Chance(50)) {
    plate.HoldColumn(1, 1, plate.rows + 1, true, true);
    plate.LoadAndKeep(plate.rows + 1, plate.columns + 1, 0, -kForce);
    plate.LoadAndKeep(1, plate.columns + 1, 0, second);
  } else {
    plate.HoldLowerCorners(true);
    const int row = plate.random.Chance(50) ? 1 : plate.rows + 1;
    const int inset = plate.columns / plate.random.Between(3, 5);
    plate.LoadAndKeep(row, 1 + inset, 0, -kForce);
    plate.LoadAndKeep(row, plate.columns + 1 - inset, 0, second);
  }
}

void ShearWall(PlateMaker& plate) {
  plate.HoldRow(1, 1, plate.columns + 1, true, true);
  if (plate.random.Chance(40)) plate.NonDesign(1, 1, 1, plate.columns);
  plate.LoadAndKeep(plate.rows + 1, plate.random.Chance(70) ? 1 : plate.columns / 2 + 1, kForce, 0);
}

void HangingLoad(PlateMaker& plate) {
  const bool whole = plate.random.Chance(50);
  const int nodes = whole ? plate.columns + 1 : plate.random.Between(2, plate.columns / 4);
  plate.HoldRow(plate.rows + 1, 1, nodes, true, true);
  plate.HoldRow(plate.rows + 1, plate.columns + 2 - nodes, plate.columns + 1, true, true);
  const bool isTilted = plate.random.Chance(30);
  plate.LoadAndKeep(1, plate.columns / 2 + 1, isTilted ? kForce / 2 : 0, -kForce);
}

struct Kind {
  const char* name;
  void (*make)(PlateMaker&);
  bool isNarrow;  ///< often no wider than it may be high
};
constexpr std::array kKinds = {
    Kind{"cantilever", Cantilever, false}, Kind{"half-beam", HalfBeam, false},
    Kind{"bridge", Bridge, false},         Kind{"arch", Arch, false},
    Kind{"bracket", CornerBracket, false}, Kind{"two-loads", TwoLoads, false},
    Kind{"shear-wall", ShearWall, true},   Kind{"hanging-load", HangingLoad, true},
};

double NonDesignShare(const Model& model) {
  const auto& cells = model.CellState.Raw();
  const auto present = std::ranges::count_if(cells, [](Integer state) { return state > 0; });
  return static_cast<double>(std::ranges::count(cells, kCellNonDesign)) /
         static_cast<double>(present);
}

}  // namespace

RandomPlate MakeRandomPlate(std::uint32_t seed, int number) {
  RandomNumbers random(seed, number);
  const Kind& kind = kKinds[static_cast<std::size_t>(number - 1) % kKinds.size()];
  const int rows = random.Between(10, 39);
  const int columns = random.Between(16, kind.isNarrow && random.Chance(60) ? 39 : 63);
  PlateMaker plate(rows, columns, random);
  kind.make(plate);
  if (random.Chance(25)) plate.Drill();
  RandomPlate result{kind.name, plate.Result(), random.Between(30, 80) / 100.0};
  result.wish = std::clamp(2 * NonDesignShare(result.model), result.wish, 0.8);
  result.model.Epsilon = 5;
  result.model.Lambda = 0.1F;
  MarkActiveNodes(result.model);
  return result;
}

}  // namespace quillane
