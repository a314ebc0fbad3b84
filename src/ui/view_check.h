// Whether the canvas can draw its grid with given settings.
#pragma once

#include "model/model.h"

namespace quillane {

/// True where the view that a canvas of the given size (any unit) shows with this DomainWidth and
/// ElementSize (mm) is finite, not empty, and has no more grid lines towards any edge than an
/// Integer counts.
bool IsDrawable(const Model& model, Single domainWidth, Single elementSize, double canvasWidth,
                double canvasHeight);

}  // namespace quillane
