// The axes and the element grid of the canvas.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Draws the axes x = 0 and y = 0 and over them lines at every multiple of ElementSize. Throws
/// RunTimeError (overflow) where the number of lines from the origin to an edge is no Integer.
void drawGrid(DrawingArea& picCanvas, const Model& model);

/// Whether a grid can be drawn at all: both lengths are positive and drawGrid would not throw on a
/// canvas of this scale.
bool GridIsDrawable(Single elementSize, const UserScale& scale);

}  // namespace quillane
