// Result fields as coloured cells on the canvas, with the legend that explains them.
#pragma once

#include "display/color_scale.h"
#include "display/drawing_area.h"
#include "display/drawing_style.h"
#include "model/model.h"

namespace quillane {

/// Shows CellStress (MPa) of every occupied cell on the scale MinStress..MaxStress, or on the
/// style's, beyond whose ends the outermost colours serve. Throws RunTimeError: overflow where a
/// value has no single-precision form, subscript where a value lies above MaxStress, and as
/// DrawCanvas.
void DrawStressMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const ColorTable& table, const DrawingStyle& style = {});

/// Shows Potential of every occupied cell on a scale from its smallest to its largest value, 0
/// included, or on the style's. Throws as DrawStressMap.
void DrawNeuronMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const ColorTable& table, const DrawingStyle& style = {});

}  // namespace quillane
