// A shape as a drawing for computer-aided design and laser cutters.
#pragma once

#include <string>

#include "export/shape.h"

namespace quillane {

/// Returns a DXF file (release 2000) with a circle or a closed polyline for each loop, in mm, on
/// the layer "OUTLINE", at the place of the model. Throws FileWriteError if no file can be written
/// in the temporary folder.
std::string DxfText(const Shape& shape);

}  // namespace quillane
