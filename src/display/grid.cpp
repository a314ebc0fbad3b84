#include "display/grid.h"

#include "display/palette.h"
#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Lines from the origin to each edge of the canvas; below 1 where the edge is on the other side.
struct GridLimits {
  Integer left, right, bottom, top;
};

Integer LinesWithin(double distance, Single elementSize) {
  return ToInteger(static_cast<double>(static_cast<Single>(distance) / elementSize),
                   "The number of grid lines");
}

GridLimits LimitsOf(Single elementSize, const UserScale& scale) {
  return {LinesWithin(-scale.left, elementSize), LinesWithin(scale.right, elementSize),
          LinesWithin(-scale.bottom, elementSize), LinesWithin(scale.top, elementSize)};
}

void SweepX(DrawingArea& picCanvas, int limit, Single step) {
  const UserScale scale = picCanvas.Scale();
  for (int i = 1; i <= limit; ++i) {
    const auto x = static_cast<double>(static_cast<Single>(i) * step);
    picCanvas.DrawLine(x, scale.top, x, scale.bottom);
  }
}

void SweepY(DrawingArea& picCanvas, int limit, Single step) {
  const UserScale scale = picCanvas.Scale();
  for (int i = 1; i <= limit; ++i) {
    const auto y = static_cast<double>(static_cast<Single>(i) * step);
    picCanvas.DrawLine(scale.left, y, scale.right, y);
  }
}

}  // namespace

void drawGrid(DrawingArea& picCanvas, const Model& model) {
  const UserScale scale = picCanvas.Scale();
  const GridLimits limits = LimitsOf(model.ElementSize, scale);
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kRed);
  picCanvas.DrawLine(0, scale.top, 0, scale.bottom);
  picCanvas.DrawLine(scale.left, 0, scale.right, 0);
  picCanvas.SetColor(kCyan);
  SweepX(picCanvas, limits.left, -model.ElementSize);
  SweepX(picCanvas, limits.right, model.ElementSize);
  SweepY(picCanvas, limits.bottom, -model.ElementSize);
  SweepY(picCanvas, limits.top, model.ElementSize);
}

bool GridIsDrawable(Single elementSize, const UserScale& scale) {
  if (!(elementSize > 0 && scale.right > scale.left && scale.top > scale.bottom)) return false;
  try {
    LimitsOf(elementSize, scale);
    return true;
  } catch (const RunTimeError&) {
    return false;
  }
}

}  // namespace quillane
