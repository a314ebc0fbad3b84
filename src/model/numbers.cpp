// Conversions between the model's number types.
#include "model/numbers.h"

#include <string>

#include "model/run_time_error.h"

namespace quillane {

Integer ToInteger(double value, const char* what) {
  // The default rounding mode of std::nearbyint is to nearest, halves to even.
  const double rounded = std::nearbyint(value);
  if (!(rounded >= -32768.0 && rounded <= 32767.0)) {
    throw RunTimeError(ErrorKind::kOverflow,
                       std::string(what) + " does not fit a 16-bit integer (-32768 to 32767)");
  }
  return static_cast<Integer>(rounded);
}

Single ToSingle(double value, const char* what) {
  // Values up to half a unit above the largest Single still round to it.
  constexpr double kLimit = 0x1.ffffffp127;
  if (!(std::fabs(value) < kLimit)) {
    throw RunTimeError(ErrorKind::kOverflow,
                       std::string(what) + " is too large for single precision");
  }
  return static_cast<Single>(value);
}

void ThrowFloatingPoint(const char* what, const char* advice) {
  throw RunTimeError(ErrorKind::kFloatingPoint, std::string(what) + " is not a finite number",
                     advice);
}

}  // namespace quillane
