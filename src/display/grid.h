// The axes and the element grid of the canvas.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Draws the axes x = 0 and y = 0, and over them lines at every multiple of ElementSize. Throws
/// RunTimeError (overflow) if the number of lines from the origin to an edge exceeds an Integer.
void drawGrid(DrawingArea& picCanvas, const Model& model);

/// Returns whether both lengths are positive and drawGrid does not throw on a canvas of this scale.
bool GridIsDrawable(Single elementSize, const UserScale& scale);

}  // namespace quillane
