// The layout of canvas, legend and labels in a client area.
#pragma once

#include "model/types.h"

namespace quillane {

/// The four lengths of the layout in layout units.
struct LayoutUnits {
  Integer canvasHeight = 0;
  Integer labelTop = 0;
  Integer colorBarWidth = 0;
  Integer canvasWidth = 0;
};

/// Divides a client area of width x height layout units: a strip of 300 units below for the labels,
/// a legend whose width is to the canvas's height as 5.5 to 21, the rest for the canvas. Every
/// length is rounded to an Integer before the next follows from it; none is negative. Throws
/// RunTimeError (overflow) if one exceeds an Integer.
LayoutUnits LayOutUnits(double width, double height);

/// The size of one character of the labels, logical pixels.
struct LabelFont {
  double lineHeight = 0;
  double averageWidth = 0;
};

/// Positions and sizes in logical pixels. Canvas and legend stand side by side at the top, the
/// labels in one line at labelTop.
struct CanvasLayout {
  int canvasWidth = 0;  ///< canvasWidth + colorBarWidth is the whole width
  int canvasHeight = 0;
  int colorBarWidth = 0;
  int labelTop = 0;
  int labelHeight = 0;
  int upDateWidth = 0;
  int mouseXYLeft = 0;
  int mouseXYWidth = 0;
};

/// Returns the length in logical pixels of a layout unit in a client area of width x height.
double LayoutUnit(int width, int height, LabelFont font);

/// Returns the layout of a window's client area of this size (logical pixels). The unit is as long
/// as the labels need for their font, and never so short that the area exceeds an Integer, so every
/// size has a layout.
CanvasLayout LayOutClientArea(int width, int height, LabelFont font);

/// Returns the layout of a picture without labels.
CanvasLayout LayOutPicture(int width, int height);

}  // namespace quillane
