// A whole picture of a model, canvas and legend side by side, without a window.
#pragma once

#include <QImage>
#include <optional>
#include <string>

#include "display/canvas_drawing.h"

namespace quillane {

enum class PictureKind { kModel, kStress, kPotential };

struct PictureSize {
  int width = 1200, height = 800;  ///< pixels
};

struct PictureOptions {
  PictureKind kind = PictureKind::kStress;
  std::optional<PictureSize> size;  ///< without it, the default or what fitDomain needs of it
  bool fitDomain = false;           ///< frame the design domain instead of the model's view
  DrawingStyle style;
  std::string label;  ///< a line in the upper left corner
};

/// Draws what the window's canvas and legend show of the model. Lines, symbols and text grow with a
/// picture of more than 1200 x 800 pixels. Needs a QGuiApplication. Throws RunTimeError: out of
/// memory for a picture too large to hold, and as DrawCanvas and the result maps.
QImage RenderPicture(const Model& model, const PictureOptions& options);

}  // namespace quillane
