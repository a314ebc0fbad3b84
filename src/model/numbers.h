// Conversions between the model's number types, and checks in place of arithmetic traps.
#pragma once

#include <cmath>
#include <concepts>

#include "model/run_time_error.h"
#include "model/types.h"

namespace quillane {

/// Returns whether ToInteger or ToSingle accepts the value.
bool FitsInteger(double value);
bool FitsSingle(double value);

/// Returns the nearest Integer, ties to even. Throws RunTimeError (overflow) naming `what`, with
/// this cause, when the value is outside -32768..32767 or not a number.
Integer ToInteger(double value, const char* what, ErrorCause cause = ErrorCause::kNone);

/// Returns the nearest Single. Throws RunTimeError (overflow) naming `what` when the value exceeds
/// the range of a Single or is not a number.
Single ToSingle(double value, const char* what);

/// Throws RunTimeError (floating point) that says that `what` is not finite.
[[noreturn]] void ThrowFloatingPoint(const char* what, ErrorCause cause);

/// Returns the value. Throws RunTimeError (floating point) naming `what`, with this cause, when it
/// is infinite or not a number: the result of a division by zero, an invalid operation or an
/// overflow.
template <std::floating_point Real>
Real Finite(Real value, const char* what, ErrorCause cause = ErrorCause::kNone) {
  if (!std::isfinite(value)) ThrowFloatingPoint(what, cause);
  return value;
}

}  // namespace quillane
