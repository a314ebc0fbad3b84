// Values of options: read as a whole, decimal, and refused with the option's name.
#pragma once

#include <string>
#include <string_view>

#include "display/drawing_style.h"
#include "image/picture.h"
#include "model/types.h"

namespace quillane {

/// A decimal number such as 24.5 or 2.1e-3. All functions here throw CLI::ValidationError, with the
/// option's name, for anything else than the whole text being such a value.
Single SingleNumber(const std::string& option, std::string_view text);

/// A whole number in decimal digits: any Integer, or one from 0 on.
Integer IntegerNumber(const std::string& option, std::string_view text);
Integer StepCount(const std::string& option, std::string_view text);

/// A number of threads, from 1 to 256.
int Jobs(const std::string& option, std::string_view text);

/// A number above 0 and up to kLargestWish.
double Share(const std::string& option, std::string_view text);

/// "1200x800": width and height in pixels.
PictureSize PixelSize(const std::string& option, std::string_view text);

/// "0,120": two numbers, the first below the second and not too far for single precision.
ValueRange NumberRange(const std::string& option, std::string_view text);

}  // namespace quillane
