// Numbers as text: the shortest general form, the two fixed formats, and reading them back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/types.h"

namespace quillane {

/// Shortest general form at the type's precision: at most 7 significant digits for a Single, 15 for
/// a Double, "." as decimal point, no trailing zeros, no leading blank, an exponent of a sign and
/// two or more digits ("1E-05", "2.1E+07") where the plain form would need more digits.
std::string GeneralText(Single value);
std::string GeneralText(Double value);
std::string GeneralText(int value);

/// The format "0.00E+00": two decimals of mantissa, halves away from zero.
std::string ExponentText(double value);

/// The format "0": a whole number, halves away from zero, no minus sign before a zero.
std::string WholeText(double value);

/// The leading number of a typed text: leading blanks skipped, then the longest part that is a
/// decimal number (sign, digits, "." and digits, exponent); 0 where there is none; nothing when it
/// passes the range of a Double.
std::optional<double> LeadingNumber(std::string_view text);

/// A whole field read as a number of the given type; blanks around it are allowed. kRounded: the
/// value is the Integer nearest to the number. After all but kNone and kRounded it is as before.
enum class FieldFault { kNone, kRounded, kEmpty, kNotANumber, kOutOfRange };
FieldFault ParseField(std::string_view field, Integer& value);
FieldFault ParseField(std::string_view field, Single& value);
FieldFault ParseField(std::string_view field, Double& value);

}  // namespace quillane
