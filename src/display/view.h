// The part of the plane that the canvas shows.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Sets DomainHeight, ViewRight and ViewTop from DomainWidth, OriginFracX, OriginFracY and the
/// canvas's size, which is above 0, so that x and y have the same scale. Throws RunTimeError
/// (overflow) if one of them exceeds the range of a Single.
void FitView(Model& model, double canvasWidth, double canvasHeight);

/// Sets DomainWidth and the origin fractions, from which FitView then derives a view that centres
/// the design domain on a canvas of this size, with room for the symbols around it. Throws
/// RunTimeError (overflow) as FitView and for a domain without extent.
void FrameDomain(Model& model, double canvasWidth, double canvasHeight);

/// Returns the canvas's user scale, mm, from ViewRight, ViewTop, DomainWidth and DomainHeight.
UserScale CanvasScale(const Model& model);

}  // namespace quillane
