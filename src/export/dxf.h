// A shape as a drawing for computer-aided design and laser cutters.
#pragma once

#include <string>

#include "export/shape.h"

namespace quillane {

/// A DXF file (release 2000): a closed polyline for each loop, in mm, on the layer "OUTLINE", where
/// the model lies. Throws FileWriteError where the temporary folder takes no file.
std::string DxfText(const Shape& shape);

}  // namespace quillane
