// Pictures as files.
#pragma once

#include <string>

#include "batch/options.h"
#include "model/model.h"

namespace quillane {

/// Returns the picture with its legend, as PNG; its label, where wanted, names the step and the
/// volume as a share of startVolume (mm^3). Throws FileWriteError where it cannot be encoded, and
/// as RenderPicture.
std::string PictureFile(const BatchOptions& options, const Model& model, int step,
                        double startVolume);

}  // namespace quillane
