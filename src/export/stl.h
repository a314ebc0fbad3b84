// A shape as a solid for printers and for programs that mill.
#pragma once

#include <string>

#include "export/shape.h"

namespace quillane {

/// A binary STL file: the shape from z = 0 to z = thickness, in mm, closed, its facets seen
/// counter-clockwise from outside. The lower left corner of the domain lies at the origin, for the
/// format has 7 digits only. Throws FileWriteError for a thickness that is not positive or a size
/// out of the format's range.
std::string StlText(const Shape& shape, double thickness);

}  // namespace quillane
