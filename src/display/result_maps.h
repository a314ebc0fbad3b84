// Result fields as coloured cells on the canvas, with their legend.
#pragma once

#include "display/canvas_drawing.h"

namespace quillane {

/// Draws CellStress (MPa) of every occupied cell on the scale MinStress..MaxStress, or on that of
/// the style, beyond whose ends the outermost colours continue. Throws RunTimeError: overflow if a
/// value exceeds a Single, subscript if a value exceeds MaxStress, and as DrawCanvas.
void DrawStressMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const DrawingStyle& style = {});

/// Draws Potential of every occupied cell on a scale from its smallest to its largest value, 0
/// included, or on that of the style. Throws as DrawStressMap.
void DrawNeuronMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const DrawingStyle& style = {});

}  // namespace quillane
