#include "display/grid.h"

#include "display/palette.h"
#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Numbers of lines from the origin to each edge of the canvas; below 1 if the edge is on the other
/// side.
struct GridLimits {
  Integer left, right, bottom, top;
};

Integer LinesWithin(double distance, Single elementSize) {
  return ToInteger(double{static_cast<Single>(distance) / elementSize}, "The number of grid lines");
}

GridLimits LimitsOf(Single elementSize, const UserScale& scale) {
  return {LinesWithin(-scale.left, elementSize), LinesWithin(scale.right, elementSize),
          LinesWithin(-scale.bottom, elementSize), LinesWithin(scale.top, elementSize)};
}

template <class DrawAt>
void Sweep(int limit, Single step, const DrawAt& drawAt) {
  for (int i = 1; i <= limit; ++i) drawAt(double{static_cast<Single>(i) * step});
}

}  // namespace

void drawGrid(DrawingArea& picCanvas, const Model& model) {
  const UserScale scale = picCanvas.Scale();
  const GridLimits limits = LimitsOf(model.ElementSize, scale);
  const auto upright = [&](double x) { picCanvas.DrawLine(x, scale.top, x, scale.bottom); };
  const auto level = [&](double y) { picCanvas.DrawLine(scale.left, y, scale.right, y); };
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kRed);
  upright(0);
  level(0);
  picCanvas.SetColor(kCyan);
  Sweep(limits.left, -model.ElementSize, upright);
  Sweep(limits.right, model.ElementSize, upright);
  Sweep(limits.bottom, -model.ElementSize, level);
  Sweep(limits.top, model.ElementSize, level);
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
