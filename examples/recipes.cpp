// The example models as recipes: domain, cells, supports, loads and parameters.
#include "examples/recipes.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "examples/rectangular_plate.h"
#include "fem/mesh.h"
#include "model/regular_grid.h"

namespace quillane {
namespace {

/// A line over a range of columns by its heights at both ends, in cells from the plate's lower
/// edge.
struct Line {
  double left, right;
  double At(double fraction) const { return left + (right - left) * fraction; }
};

constexpr Line kBottom{-1E3, -1E3};
constexpr Line kTop{1E3, 1E3};

/// The plate of an example. Its sketch has empty parts.
class Recipe : public RectangularPlate {
 public:
  Recipe(ExampleStart start, int rows, int columns, Single elementSize)
      : RectangularPlate(rows, columns, elementSize), start_(start) {}

  /// Empties, in the sketch only, the design cells of columns c1..c2 whose centre lies between two
  /// lines.
  void Empty(int c1, int c2, Line lower, Line upper) {
    if (start_ == ExampleStart::kFullDomain) return;
    for (int j = c1; j <= c2; ++j) {
      const double along = (j - c1 + 0.5) / (c2 - c1 + 1);
      for (int i = 1; i <= model_.CellRowCount; ++i) {
        const bool between = i - 0.5 > lower.At(along) && i - 0.5 < upper.At(along);
        if (between && model_.CellState(i, j) == kCellDesign) model_.CellState(i, j) = kCellEmpty;
      }
    }
  }

  /// Sets the parameters, with the stress target (MPa) of the sketch, which bears it to the end, or
  /// of the full domain, which bears it as a first one.
  void Targets(Single sketch, Single full) {
    const bool isFull = start_ == ExampleStart::kFullDomain;
    model_.StressTarget = isFull ? full : sketch;
    model_.Epsilon = 5;
    model_.Lambda = isFull ? 0.1F : 0.05F;
  }

 private:
  ExampleStart start_;
};

Recipe Cantilever(ExampleStart start) {
  Recipe plate(start, 20, 40, 10);
  plate.Cells(10, 11, 39, 40, kCellNonDesign);
  plate.Empty(1, 40, {22, 12}, kTop);
  plate.Empty(1, 40, kBottom, {-2, 8});
  for (int row = 1; row <= 21; ++row) plate.Hold(row, 1, true, true);
  plate.Load(11, 41, 0, -1000);
  plate.Targets(28, 5);
  return plate;
}

Recipe HalfMbbBeam(ExampleStart start) {
  Recipe plate(start, 20, 60, 10);
  plate.Cells(19, 20, 1, 2, kCellNonDesign);
  plate.Empty(1, 60, {24, 2}, kTop);
  for (int row = 1; row <= 21; ++row) plate.Hold(row, 1, true, false);
  for (int column = 59; column <= 61; ++column) plate.Hold(1, column, false, true);
  plate.Load(21, 1, 0, -1000);
  plate.Targets(40, 6);
  return plate;
}

Recipe Bridge(ExampleStart start) {
  Recipe plate(start, 24, 80, 25);
  plate.Cells(23, 24, 1, 80, kCellNonDesign);
  plate.Empty(1, 20, kBottom, {-3, 13});
  plate.Empty(21, 40, kBottom, {13, 20});
  plate.Empty(41, 60, kBottom, {20, 13});
  plate.Empty(61, 80, kBottom, {13, -3});
  for (int column = 1; column <= 4; ++column) {
    plate.Hold(1, column, true, true);
    plate.Hold(1, 82 - column, true, true);
  }
  for (int row = 23; row <= 25; ++row) {
    plate.Hold(row, 1, false, true);
    plate.Hold(row, 81, false, true);
  }
  for (int column = 1; column <= 81; column += 4) plate.Load(25, column, 0, -500);
  plate.Targets(18, 3);
  return plate;
}

Recipe LBracket(ExampleStart start) {
  Recipe plate(start, 40, 40, 5);
  plate.Cells(17, 40, 17, 40, kCellCutOut);
  plate.Cells(14, 16, 38, 40, kCellNonDesign);
  plate.Empty(1, 16, kBottom, {16, 0});
  plate.Empty(17, 40, kBottom, {0, 13});
  for (int column = 1; column <= 17; ++column) plate.Hold(41, column, true, true);
  plate.Load(17, 40, 0, -400);
  plate.Targets(30, 5.5F);
  return plate;
}

Recipe TwoBarTruss(ExampleStart start) {
  Recipe plate(start, 92, 36, 10);
  plate.Cells(45, 48, 35, 36, kCellNonDesign);
  plate.Empty(2, 36, {92, 48}, kTop);
  plate.Empty(2, 36, {13, 53}, {79, 39});
  plate.Empty(2, 36, kBottom, {0, 44});
  for (int row = 1; row <= 93; ++row) plate.Hold(row, 1, true, true);
  plate.Load(47, 37, 0, -4000);
  plate.Targets(38, 2.3F);
  return plate;
}

Recipe BoltedLever(ExampleStart start) {
  Recipe plate(start, 36, 72, 4);
  plate.Empty(1, 72, {36, 23}, kTop);
  plate.Empty(1, 72, kBottom, {0, 13});
  plate.Ring(12, 18, 0, 6, kCellCutOut);
  plate.Ring(12, 18, 6, 8, kCellNonDesign);
  plate.Ring(64, 18, 0, 3, kCellCutOut);
  plate.Ring(64, 18, 3, 5, kCellNonDesign);
  for (int row = 13; row <= 25; ++row) {
    for (int column = 7; column <= 19; ++column) {
      const double distance = std::hypot(column - 13.0, row - 19.0);
      if (distance > 5 && distance < 6.5) plate.Hold(row, column, true, true);
    }
  }
  for (int column = 63; column <= 67; ++column) plate.Load(16, column, 0, -100);
  plate.Targets(17, 2.9F);
  return plate;
}

/// Returns whether the refined node (row, column), from 0, lies on a coarse node held in direction
/// d, or on the edge between two of them.
bool HeldBetween(const Model& coarse, int row, int column, int k, int d) {
  const bool onRow = row % k == 0, onColumn = column % k == 0;
  if (!onRow && !onColumn) return false;
  const auto held = [&coarse, d](int i, int j) {
    return coarse.NodeFreedom(NodeOfCorner(coarse, i + 1, j + 1), d) != 0;
  };
  const int i = row / k, j = column / k;
  return held(i, j) && (onRow || held(i + 1, j)) && (onColumn || held(i, j + 1));
}

/// Returns the same plate with k x k cells in place of every cell.
Model Refined(const Model& coarse, int k) {
  Model fine = coarse;
  fine.ElementSize = coarse.ElementSize / static_cast<Single>(k);
  BuildMesh(fine, coarse.CellRowCount * k, coarse.CellColumnCount * k);
  for (int i = 0; i < fine.CellRowCount; ++i) {
    for (int j = 0; j < fine.CellColumnCount; ++j) {
      fine.CellState(i + 1, j + 1) = coarse.CellState(i / k + 1, j / k + 1);
    }
  }
  for (int i = 0; i <= fine.CellRowCount; ++i) {
    for (int j = 0; j <= fine.CellColumnCount; ++j) {
      const int node = NodeOfCorner(fine, i + 1, j + 1);
      const bool onNode = i % k == 0 && j % k == 0;
      const int from = NodeOfCorner(coarse, i / k + 1, j / k + 1);
      for (int d = 1; d <= 2; ++d) {
        fine.NodeFreedom(node, d) = HeldBetween(coarse, i, j, k, d) ? 1 : 0;
        if (onNode) fine.NodeLoad(node, d) = coarse.NodeLoad(from, d);
      }
    }
  }
  return fine;
}

struct NamedRecipe {
  std::string_view name;
  Recipe (*recipe)(ExampleStart);
  int shippedRefinement = 1;
};

constexpr NamedRecipe kRecipes[] = {
    {"cantilever", Cantilever}, {"half-mbb-beam", HalfMbbBeam, 2}, {"bridge", Bridge},
    {"l-bracket", LBracket},    {"two-bar-truss", TwoBarTruss},    {"bolted-lever", BoltedLever}};

const NamedRecipe& RecipeNamed(std::string_view name) {
  const auto* const found = std::ranges::find(kRecipes, name, &NamedRecipe::name);
  if (found == std::end(kRecipes)) throw std::invalid_argument("no example " + std::string(name));
  return *found;
}

}  // namespace

std::vector<std::string_view> ExampleNames() {
  std::vector<std::string_view> names;
  for (const NamedRecipe& recipe : kRecipes) names.push_back(recipe.name);
  return names;
}

Model MakeExample(std::string_view name, ExampleStart start, int refinement) {
  const NamedRecipe& named = RecipeNamed(name);
  if (refinement < 1) throw std::invalid_argument("a refinement below 1");
  return Refined(named.recipe(start).Result(), refinement);
}

Model ShippedExample(std::string_view name) {
  return MakeExample(name, ExampleStart::kFullDomain, RecipeNamed(name).shippedRefinement);
}

}  // namespace quillane
