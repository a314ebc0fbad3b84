// Writes the shipped example models anew: each is a short recipe of domain, cells, supports, loads
// and parameters. Usage: quillane-make-examples FOLDER
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>

#include "fem/mesh.h"
#include "model/model_file.h"

namespace quillane {
namespace {

/// A plate of design cells with its lower left corner at the origin, seen whole in the view.
class Recipe {
 public:
  Recipe(int rows, int columns, Single elementSize) {
    model_.ElementSize = elementSize;
    model_.DomainX2 = static_cast<Single>(columns) * elementSize;
    model_.DomainY2 = static_cast<Single>(rows) * elementSize;
    const Single span = std::max(model_.DomainX2, 1.5F * model_.DomainY2);
    model_.DomainWidth = 1.25F * span;
    // The view's centre is the plate's; its height is taken as two thirds of its width.
    model_.OriginFracX = 0.5F + 0.5F * model_.DomainX2 / model_.DomainWidth;
    model_.OriginFracY = 0.5F + 0.75F * model_.DomainY2 / model_.DomainWidth;
    BuildMesh(model_, rows, columns);
    Cells(1, rows, 1, columns, kCellDesign);
  }

  /// Sets the state of rows r1..r2 and columns c1..c2.
  void Cells(int r1, int r2, int c1, int c2, Integer state) {
    for (int i = r1; i <= r2; ++i) {
      for (int j = c1; j <= c2; ++j) model_.CellState(i, j) = state;
    }
  }

  /// Sets the state of the cells whose centre lies in a ring round (x, y), in cells.
  void Ring(double x, double y, double inner, double outer, Integer state) {
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j) {
        const double distance = std::hypot(j - 0.5 - x, i - 0.5 - y);
        if (distance >= inner && distance < outer) model_.CellState(i, j) = state;
      }
    }
  }

  /// Empties the design cells of columns c1..c2 whose centre lies above the line of heights h1
  /// (left end) to h2 (right end), or below it; heights in cells from the plate's lower edge.
  void EmptyBeyond(int c1, int c2, double h1, double h2, bool above) {
    for (int j = c1; j <= c2; ++j) {
      const double height = h1 + (h2 - h1) * (j - c1 + 0.5) / (c2 - c1 + 1);
      for (int i = 1; i <= model_.CellRowCount; ++i) {
        const bool beyond = above ? i - 0.5 > height : i - 0.5 < height;
        if (beyond && model_.CellState(i, j) == kCellDesign) model_.CellState(i, j) = kCellEmpty;
      }
    }
  }

  /// Holds the node in grid row and column, both from 1.
  void Hold(int row, int column, bool x, bool y) {
    model_.NodeFreedom(Node(row, column), 1) = x ? 1 : 0;
    model_.NodeFreedom(Node(row, column), 2) = y ? 1 : 0;
  }

  void Load(int row, int column, double fx, double fy) {
    model_.NodeLoad(Node(row, column), 1) = fx;
    model_.NodeLoad(Node(row, column), 2) = fy;
  }

  void Rule(Single stressTarget, Integer epsilon, Single lambda) {
    model_.StressTarget = stressTarget;
    model_.Epsilon = epsilon;
    model_.Lambda = lambda;
  }

  void Save(const std::filesystem::path& folder, const std::string& name) {
    SaveModelFile(model_, folder / (name + ".model"));
  }

 private:
  int Node(int row, int column) const { return (row - 1) * (model_.CellColumnCount + 1) + column; }

  Model model_;
};

Recipe Cantilever() {
  Recipe plate(20, 40, 10);
  plate.Cells(1, 20, 1, 1, kCellNonDesign);
  plate.Cells(10, 11, 39, 40, kCellNonDesign);
  plate.EmptyBeyond(1, 40, 22, 12, true);
  plate.EmptyBeyond(1, 40, -2, 8, false);
  for (int row = 1; row <= 21; ++row) plate.Hold(row, 1, true, true);
  plate.Load(11, 41, 0, -1000);
  plate.Rule(28, 5, 0.05F);
  return plate;
}

Recipe HalfMbbBeam() {
  Recipe plate(20, 60, 10);
  plate.Cells(19, 20, 1, 2, kCellNonDesign);
  plate.Cells(1, 2, 59, 60, kCellNonDesign);
  for (int row = 1; row <= 21; ++row) plate.Hold(row, 1, true, false);
  plate.Hold(1, 61, false, true);
  plate.Load(21, 1, 0, -1000);
  plate.Rule(25, 3, 0.1F);
  return plate;
}

Recipe Bridge() {
  Recipe plate(24, 72, 25);
  plate.Cells(9, 10, 1, 72, kCellNonDesign);
  plate.Cells(1, 8, 1, 72, kCellDesign);
  for (int column = 1; column <= 3; ++column) plate.Hold(9, column, true, true);
  for (int column = 71; column <= 73; ++column) plate.Hold(9, column, true, true);
  for (int column = 5; column <= 69; column += 4) plate.Load(11, column, 0, -500);
  plate.Rule(10, 3, 0.1F);
  return plate;
}

Recipe LBracket() {
  Recipe plate(40, 40, 5);
  plate.Cells(17, 40, 17, 40, kCellCutOut);
  plate.Cells(40, 40, 1, 16, kCellNonDesign);
  plate.Cells(14, 16, 38, 40, kCellNonDesign);
  for (int column = 1; column <= 17; ++column) plate.Hold(41, column, true, true);
  plate.Load(17, 40, 0, -400);
  plate.Rule(20, 3, 0.1F);
  return plate;
}

Recipe TwoBarTruss() {
  Recipe plate(60, 24, 10);
  plate.Cells(1, 60, 1, 1, kCellNonDesign);
  plate.Cells(30, 31, 23, 24, kCellNonDesign);
  for (int row = 1; row <= 61; ++row) plate.Hold(row, 1, true, true);
  plate.Load(31, 25, 0, -1000);
  plate.Rule(15, 3, 0.1F);
  return plate;
}

Recipe BoltedLever() {
  Recipe plate(36, 72, 4);
  plate.Ring(12, 18, 0, 6, kCellCutOut);
  plate.Ring(12, 18, 6, 8, kCellNonDesign);
  plate.Ring(62, 18, 0, 3, kCellCutOut);
  plate.Ring(62, 18, 3, 5, kCellNonDesign);
  for (int row = 13; row <= 25; ++row) {
    for (int column = 7; column <= 19; ++column) {
      const double distance = std::hypot(column - 13.0, row - 19.0);
      if (distance > 5 && distance < 6.5) plate.Hold(row, column, true, true);
    }
  }
  for (int column = 61; column <= 65; ++column) plate.Load(15, column, 30, -100);
  plate.Rule(12, 3, 0.1F);
  return plate;
}

void WriteAll(const std::filesystem::path& folder) {
  Cantilever().Save(folder, "cantilever");
  HalfMbbBeam().Save(folder, "half-mbb-beam");
  Bridge().Save(folder, "bridge");
  LBracket().Save(folder, "l-bracket");
  TwoBarTruss().Save(folder, "two-bar-truss");
  BoltedLever().Save(folder, "bolted-lever");
}

}  // namespace
}  // namespace quillane

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("Usage: quillane-make-examples FOLDER\n", stderr);
    return 2;
  }
  try {
    quillane::WriteAll(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillane-make-examples: %s\n", error.what());
    return 2;
  }
  return 0;
}
