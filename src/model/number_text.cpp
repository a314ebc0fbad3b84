// Number formatting and parsing on std::to_chars and std::from_chars, which know no locale.
#include "model/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "model/numbers.h"

namespace quillane {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// Returns whether a number that from_chars reports as out of range is too small rather than too
/// large: the decimal exponent of its first significant digit is negative.
bool IsTiny(std::string_view number) {
  const std::size_t e = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, e);
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  if (first == std::string_view::npos) return true;
  const auto position = static_cast<double>(point) - static_cast<double>(first);
  const double exponent =
      e < number.size() ? std::strtod(std::string(number.substr(e + 1)).c_str(), nullptr) : 0.0;
  return position + exponent < 0;
}

/// The longest decimal number at the start of a text.
template <class T>
struct Leading {
  std::size_t length = 0;  ///< 0 if there is none
  T value = 0;
  bool fits = true;  ///< in T; a number too small for it is 0
};

template <class T>
Leading<T> LeadingReal(std::string_view text) {
  // One sign; the names of infinity and of no number are none.
  const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
  if (text.find_first_of("0123456789.", sign) != sign) return {};
  const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
  T value = 0;
  const auto [end, error] = std::from_chars(begin, text.data() + text.size(), value);
  if (error == std::errc::invalid_argument) return {};
  const auto length = static_cast<std::size_t>(end - text.data());
  if (error == std::errc::result_out_of_range) return {length, 0, IsTiny(text.substr(0, length))};
  return {length, value == 0 ? T{0} : value};  // no negative zero enters the model
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

template <class T>
FieldFault ParseReal(std::string_view field, T& value) {
  const std::string_view text = TrimBlanks(field);
  if (text.empty()) return FieldFault::kEmpty;
  const Leading<T> number = LeadingReal<T>(text);
  if (number.length != text.size()) return FieldFault::kNotANumber;
  if (!number.fits) return FieldFault::kOutOfRange;
  value = number.value;
  return FieldFault::kNone;
}

template <class T>
std::string CharsOf(T value, std::chars_format format, int digits) {
  std::array<char, 800> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, digits);
  return {buffer.data(), end.ptr};
}

template <class T>
std::string GeneralReal(T value, int digits) {
  if (value == 0) return "0";
  std::string text = CharsOf(value, std::chars_format::general, digits);
  const std::size_t e = text.find('e');
  if (e != std::string::npos) text[e] = 'E';
  return text;
}

}  // namespace

std::string GeneralText(Single value) { return GeneralReal(value, 7); }
std::string GeneralText(Double value) { return GeneralReal(value, 15); }
std::string GeneralText(int value) { return std::to_string(value); }

std::string ExponentText(double value) {
  if (!std::isfinite(value)) return GeneralText(value);
  // Every double is a finite decimal fraction of at most 767 digits, so a tie shows itself exactly.
  const std::string exact = CharsOf(std::fabs(value), std::chars_format::scientific, 770);
  const std::size_t e = exact.find('e');
  int exponent = 0;
  std::from_chars(exact.data() + e + (exact[e + 1] == '+' ? 2 : 1), exact.data() + exact.size(),
                  exponent);
  int mantissa = (exact[0] - '0') * 100 + (exact[2] - '0') * 10 + (exact[3] - '0');
  if (exact[4] >= '5') ++mantissa;
  if (mantissa == 1000) {
    mantissa = 100;
    ++exponent;
  }
  std::string text = value < 0 ? "-" : "";
  text += std::to_string(mantissa / 100) + "." + std::to_string(mantissa / 10 % 10) +
          std::to_string(mantissa % 10) + (exponent < 0 ? "E-" : "E+");
  const int size = std::abs(exponent);
  return text + (size < 10 ? "0" : "") + std::to_string(size);
}

std::string WholeText(double value) {
  const double rounded = std::round(value);
  if (rounded == 0) return "0";
  return CharsOf(rounded, std::chars_format::fixed, 0);
}

std::optional<double> LeadingNumber(std::string_view text) {
  const Leading<double> number = LeadingReal<double>(TrimBlanks(text));
  return number.fits ? std::optional(number.value) : std::nullopt;
}

FieldFault ParseField(std::string_view field, Integer& value) {
  double real = 0.0;
  const FieldFault fault = ParseReal(field, real);
  if (fault != FieldFault::kNone) return fault;
  if (!FitsInteger(real)) return FieldFault::kOutOfRange;
  value = ToInteger(real, "a field");
  return value == real ? FieldFault::kNone : FieldFault::kRounded;
}

FieldFault ParseField(std::string_view field, Single& value) { return ParseReal(field, value); }
FieldFault ParseField(std::string_view field, Double& value) { return ParseReal(field, value); }

}  // namespace quillane
