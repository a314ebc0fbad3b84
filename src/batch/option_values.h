// Values of options: read as a whole, decimal, and refused with the option's name.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "model/types.h"

namespace quillane {

/// A decimal number such as 24.5 or 2.1e-3. All functions here throw CLI::ValidationError, with the
/// option's name, for anything else than the whole text being such a value.
double DecimalNumber(const std::string& option, std::string_view text);
Single SingleNumber(const std::string& option, std::string_view text);

/// A whole number from lowest to highest, in decimal digits.
int WholeNumber(const std::string& option, std::string_view text, int lowest, int highest);

/// A number between 0 and 1, both excluded.
double Share(const std::string& option, std::string_view text);

/// "1200x800": width and height in pixels.
std::pair<int, int> PixelSize(const std::string& option, std::string_view text);

/// "0,120": two numbers, the first below the second.
std::pair<double, double> NumberRange(const std::string& option, std::string_view text);

}  // namespace quillane
