// A whole picture of a model, canvas and legend side by side, without a window.
#pragma once

#include <QImage>

#include "model/model.h"

namespace quillane {

enum class PictureKind { kModel, kStress, kPotential };

/// What the window's canvas and legend show of the model, in width x height pixels. Needs a
/// QGuiApplication. Throws RunTimeError: out of memory for a picture too large to hold, and as
/// DrawCanvas and the result maps.
QImage RenderPicture(const Model& model, PictureKind kind, int width, int height);

}  // namespace quillane
