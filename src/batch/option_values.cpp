#include "batch/option_values.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "model/numbers.h"
#include "model/platform.h"
#include "optimize/volume_search.h"

namespace quillane {
namespace {

constexpr int kSmallestPicture = 2;  // canvas and legend of a pixel each
constexpr int kLargestPicture = 16384;

[[noreturn]] void Refuse(const std::string& option, std::string_view wanted,
                         std::string_view text) {
  throw CLI::ValidationError(option, fmt::format("expects {}, not \"{}\"", wanted, text));
}

/// Returns the whole text, which may begin with a sign, as a number.
template <class T>
std::optional<T> Whole(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  T value{};
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || rest != end) return std::nullopt;
  return value;
}

std::optional<double> Finite(std::string_view text) {
  const std::optional<double> value = Whole<double>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

/// Returns the two parts of a text around a separator; the second is empty if there is none.
std::pair<std::string_view, std::string_view> Halves(std::string_view text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) return {text, {}};
  return {text.substr(0, at), text.substr(at + 1)};
}

int WholeNumber(int lowest, int highest, const std::string& option, std::string_view text) {
  const std::optional<int> value = Whole<int>(text);
  if (!value || *value < lowest || *value > highest) {
    Refuse(option, fmt::format("a whole number from {} to {}", lowest, highest), text);
  }
  return *value;
}

}  // namespace

Single SingleNumber(const std::string& option, std::string_view text) {
  const std::optional<double> value = Finite(text);
  if (!value) Refuse(option, "a decimal number such as 24.5", text);
  if (!FitsSingle(*value)) Refuse(option, "a number of single precision", text);
  return static_cast<Single>(*value);
}

Integer IntegerNumber(const std::string& option, std::string_view text) {
  return static_cast<Integer>(
      WholeNumber(std::numeric_limits<Integer>::min(), kIntegerMax, option, text));
}

int StepCount(const std::string& option, std::string_view text) {
  return WholeNumber(0, kIntegerMax, option, text);
}

int Jobs(const std::string& option, std::string_view text) {
  return WholeNumber(1, 256, option, text);
}

double Share(const std::string& option, std::string_view text) {
  const std::optional<double> value = Finite(text);
  if (!value || *value <= 0 || *value > kLargestWish) {
    Refuse(option, fmt::format("a number above 0 and up to {}, such as 0.5", kLargestWish), text);
  }
  return *value;
}

std::filesystem::path FileName(const std::string& option, std::string_view text) {
  if (text.empty()) throw CLI::ValidationError(option, "expects a name");
  return PathFromText(text);
}

PictureSize PixelSize(const std::string& option, std::string_view text) {
  const auto [first, second] = Halves(text, 'x');
  const std::optional<int> width = Whole<int>(first), height = Whole<int>(second);
  const auto usable = [](std::optional<int> size) {
    return size && *size >= kSmallestPicture && *size <= kLargestPicture;
  };
  if (!usable(width) || !usable(height)) {
    Refuse(option,
           fmt::format("WIDTHxHEIGHT, each from {} to {}", kSmallestPicture, kLargestPicture),
           text);
  }
  return {*width, *height};
}

ValueRange NumberRange(const std::string& option, std::string_view text) {
  const auto [first, second] = Halves(text, ',');
  const std::optional<double> low = Finite(first), high = Finite(second);
  if (!low || !high || *low >= *high) {
    Refuse(option, "MIN,MAX with MIN below MAX, such as 0,120", text);
  }
  for (const double number : {*low, *high, *high - *low}) {
    if (!FitsSingle(number)) Refuse(option, "a range of single precision", text);
  }
  return {*low, *high};
}

}  // namespace quillane
