// Numbers as text: the shortest general form, the two fixed formats, and reading them back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/types.h"

namespace quillane {

/// Returns the shortest general form at the type's precision: at most 7 significant digits for a
/// Single, 15 for a Double, "." as decimal point, no trailing zeros, no leading blank, an exponent
/// of a sign and two or more digits ("1E-05", "2.1E+07") where the plain form would need more
/// digits.
std::string GeneralText(Single value);
std::string GeneralText(Double value);
std::string GeneralText(int value);

/// Formats as "0.00E+00": two decimals of mantissa, ties away from zero.
std::string ExponentText(double value);

/// Formats as "0": a whole number, ties away from zero, no minus sign before a zero.
std::string WholeText(double value);

/// Returns the leading number of a typed text: skips leading blanks and takes the longest prefix
/// that is a decimal number (sign, digits, "." and digits, exponent). Returns 0 if there is none
/// and nothing if the number exceeds the range of a Double.
std::optional<double> LeadingNumber(std::string_view text);

/// The result of ParseField. kRounded: the value is the Integer nearest to the number.
enum class FieldFault { kNone, kRounded, kEmpty, kNotANumber, kOutOfRange };
/// Reads a whole field as a number of the given type; blanks around it are allowed. Leaves value
/// unchanged unless it returns kNone or kRounded.
FieldFault ParseField(std::string_view field, Integer& value);
FieldFault ParseField(std::string_view field, Single& value);
FieldFault ParseField(std::string_view field, Double& value);

}  // namespace quillane
