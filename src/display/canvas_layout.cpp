#include "display/canvas_layout.h"

#include <algorithm>
#include <cmath>

#include "model/numbers.h"

namespace quillane {
namespace {

constexpr double kLabelStrip = 300;      // units below the canvas
constexpr double kLabelBelow = 230;      // units from the labels' top to the bottom
constexpr double kLabelHeight = 180;     // units
constexpr double kUpDateWidth = 5000;    // units
constexpr double kMouseXYLeft = 5300;    // units
constexpr double kMouseXYWidth = 4000;   // units
constexpr double kLabelCharacters = 60;  // that fit the wider label
constexpr double kLongestSide = 32000;   // units, well within an Integer

Integer AtLeastZero(double length, const char* what) {
  return ToInteger(std::max(length, 0.0), what);
}

/// Rounds to pixels, at least one.
int Pixels(double length) { return std::max(1, static_cast<int>(std::lround(length))); }

/// Divides the width; `unit` is the length of a layout unit in pixels.
void ShareWidth(CanvasLayout& layout, const LayoutUnits& units, int width, double unit) {
  layout.canvasWidth = std::clamp(Pixels(units.canvasWidth * unit), 1, std::max(1, width - 1));
  layout.colorBarWidth = std::max(1, width - layout.canvasWidth);
}

}  // namespace

LayoutUnits LayOutUnits(double width, double height) {
  LayoutUnits units;
  units.canvasHeight = AtLeastZero(height - kLabelStrip, "The height of the canvas");
  units.labelTop = AtLeastZero(height - kLabelBelow, "The top of the labels");
  units.colorBarWidth = ToInteger(units.canvasHeight / 21.0 * 5.5, "The width of the colour bar");
  units.canvasWidth = AtLeastZero(width - units.colorBarWidth, "The width of the canvas");
  return units;
}

double LayoutUnit(int width, int height, LabelFont font) {
  return std::max({font.lineHeight / kLabelHeight,
                   font.averageWidth * kLabelCharacters / kUpDateWidth,
                   std::max({width, height, 1}) / kLongestSide});
}

CanvasLayout LayOutClientArea(int width, int height, LabelFont font) {
  const double unit = LayoutUnit(width, height, font);
  const LayoutUnits units = LayOutUnits(width / unit, height / unit);
  CanvasLayout layout;
  ShareWidth(layout, units, width, unit);
  layout.canvasHeight = Pixels(units.canvasHeight * unit);
  layout.labelTop = Pixels(units.labelTop * unit);
  layout.labelHeight = static_cast<int>(std::ceil(kLabelHeight * unit));
  layout.upDateWidth = Pixels(std::min(kUpDateWidth * unit, 1.0 * width));
  layout.mouseXYLeft = Pixels(kMouseXYLeft * unit);
  layout.mouseXYWidth = Pixels(std::min(kMouseXYWidth * unit, 1.0 * width - layout.mouseXYLeft));
  return layout;
}

CanvasLayout LayOutPicture(int width, int height) {
  const double unit = std::max({width, height, 1}) / kLongestSide;
  const LayoutUnits units = LayOutUnits(width / unit, height / unit + kLabelStrip);
  CanvasLayout layout;
  ShareWidth(layout, units, width, unit);
  layout.canvasHeight = height;
  return layout;
}

}  // namespace quillane
