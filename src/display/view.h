// What part of the plane the canvas shows.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Sets DomainHeight, ViewRight and ViewTop from DomainWidth, the origin fractions and the canvas's
/// size, so that a millimetre is as long in x as in y. Throws RunTimeError (overflow) where one of
/// them has no single-precision value.
void FitView(Model& model, double canvasWidth, double canvasHeight);

/// Sets DomainWidth and the origin fractions so that a canvas of this size shows the design domain
/// in its middle, with room for the symbols round it; for FitView to go on with. Throws
/// RunTimeError (overflow) as FitView, and for a domain without extent.
void FrameDomain(Model& model, double canvasWidth, double canvasHeight);

/// The canvas's user scale, mm: from ViewRight, ViewTop, DomainWidth and DomainHeight.
UserScale CanvasScale(const Model& model);

}  // namespace quillane
