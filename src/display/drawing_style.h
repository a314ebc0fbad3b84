// Options of a drawing of a model.
#pragma once

#include <optional>

namespace quillane {

struct ValueRange {
  double smallest = 0;
  double largest = 0;
};

struct DrawingStyle {
  bool grid = true;                 ///< axes, grid lines and the frames of cells
  std::optional<ValueRange> range;  ///< of a map's colours; by default that of the values
};

}  // namespace quillane
