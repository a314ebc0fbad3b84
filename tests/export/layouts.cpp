#include "export/layouts.h"

#include <cmath>
#include <random>

namespace quillane::test {

Model Layout(const std::vector<std::string>& rows) {
  const int count = static_cast<int>(rows.size()), columns = static_cast<int>(rows[0].size());
  Model model = Plate(count, columns, 10, kCellEmpty);
  for (int i = 1; i <= count; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const char cell = rows[static_cast<std::size_t>(count - i)][static_cast<std::size_t>(j - 1)];
      if (cell == '#') model.CellState(i, j) = kCellDesign;
      if (cell == 'N') model.CellState(i, j) = kCellNonDesign;
      if (cell == 'x') model.CellState(i, j) = kCellCutOut;
    }
  }
  return model;
}

Model RandomLayout(unsigned seed) {
  std::mt19937 random(seed);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * static_cast<double>(random() % 10001) / 10000;
  };
  const int rows = static_cast<int>(between(3, 26)), columns = static_cast<int>(between(3, 26));
  Model model = Plate(rows, columns, 10, kCellEmpty);
  const double a = between(-1, 1), b = between(-1, 1), c = between(-1, 1), d = between(-1, 1);
  const double noise = seed % 3 == 0 ? between(0, 1.5) : 0, level = between(-1, 0.8);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const double field =
          std::sin(a * i + b * j) + std::sin(c * i + d * j) + between(-noise, noise);
      model.CellState(i, j) = field > level ? kCellDesign : kCellEmpty;
      if (random() % 150 == 0)
        model.CellState(i, j) = random() % 2 == 0 ? kCellNonDesign : kCellCutOut;
    }
  }
  model.CellState(1, 1) = kCellDesign;
  for (int n = 1; n <= model.NodeCount; ++n) {
    if (random() % 80 == 0) model.NodeFreedom(n, 1 + static_cast<int>(random() % 2)) = 1;
    if (random() % 80 == 0) model.NodeLoad(n, 1 + static_cast<int>(random() % 2)) = -5;
  }
  return model;
}

}  // namespace quillane::test
