// Plates of drawn or random layouts, whose shapes are tested.
#pragma once

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "support/plates.h"

namespace quillane::test {

/// Cells of 10 mm as drawn, upper row first: '#' material, 'N' non-design, 'x' cut out, '.' empty.
inline Model Layout(const std::vector<std::string>& rows) {
  const int count = static_cast<int>(rows.size()), columns = static_cast<int>(rows[0].size());
  Model model = Plate(count, columns, 10, kCellEmpty);
  for (int i = 1; i <= count; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const char c = rows[static_cast<std::size_t>(count - i)][static_cast<std::size_t>(j - 1)];
      model.CellState(i, j) = c == '#'   ? kCellDesign
                              : c == 'N' ? kCellNonDesign
                              : c == 'x' ? kCellCutOut
                                         : kCellEmpty;
    }
  }
  return model;
}

/// Members, islands and holes of random waves and noise, down to single cells and contacts in
/// corners; with some non-design and cut-out cells, supports and loads.
inline Model RandomLayout(unsigned seed) {
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
      const double field = std::sin(a * i + b * j) + std::sin(c * i + d * j);
      if (field + between(-noise, noise) > level) model.CellState(i, j) = kCellDesign;
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
