// A shape as a drawing for browsers and drawing programs.
#pragma once

#include <string>

#include "export/shape.h"

namespace quillane {

/// Returns an SVG file with one filled path in mm, true to size, its y turned down as the format
/// requires.
std::string SvgText(const Shape& shape);

}  // namespace quillane
