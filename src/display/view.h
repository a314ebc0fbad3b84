// What part of the plane the canvas shows.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Sets DomainHeight, ViewRight and ViewTop from DomainWidth, the origin fractions and the canvas's
/// size, so that a millimetre is as long in x as in y. Throws RunTimeError (overflow) where one of
/// them has no single-precision value.
void FitView(Model& model, double canvasWidth, double canvasHeight);

/// The canvas's user scale, mm: from ViewRight, ViewTop, DomainWidth and DomainHeight.
UserScale CanvasScale(const Model& model);

}  // namespace quillane
