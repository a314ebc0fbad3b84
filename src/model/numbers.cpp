#include "model/numbers.h"

#include <string>

namespace quillane {

// The default rounding mode of std::nearbyint is to nearest, halves to even.
bool FitsInteger(double value) {
  const double rounded = std::nearbyint(value);
  return rounded >= -32768.0 && rounded <= 32767.0;
}

// Values up to half a unit above the largest Single still round to it.
bool FitsSingle(double value) { return std::fabs(value) < 0x1.ffffffp127; }

Integer ToInteger(double value, const char* what, ErrorCause cause) {
  if (!FitsInteger(value)) {
    throw RunTimeError(ErrorKind::kOverflow,
                       std::string(what) + " does not fit a 16-bit integer (-32768 to 32767)",
                       cause);
  }
  return static_cast<Integer>(std::nearbyint(value));
}

Single ToSingle(double value, const char* what) {
  if (!FitsSingle(value)) {
    throw RunTimeError(ErrorKind::kOverflow,
                       std::string(what) + " is too large for single precision");
  }
  return static_cast<Single>(value);
}

void ThrowFloatingPoint(const char* what, ErrorCause cause) {
  throw RunTimeError(ErrorKind::kFloatingPoint, std::string(what) + " is not a finite number",
                     cause);
}

}  // namespace quillane
