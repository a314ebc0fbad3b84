// A shape as a solid for printers and for programs that mill.
#pragma once

#include <string>

#include "export/shape.h"

namespace quillane {

/// Returns a binary STL file of the closed solid from z = 0 to z = thickness, in mm, its facets
/// counter-clockwise as seen from outside. The lower left corner of the domain is the origin,
/// because the format has only 7 digits. Throws FileWriteError if the thickness is not positive or
/// a size is out of the format's range.
std::string StlText(const Shape& shape, double thickness);

}  // namespace quillane
