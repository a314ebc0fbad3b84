// Conversions between the model's number types, and checks in place of arithmetic traps.
#pragma once

#include <cmath>
#include <concepts>

#include "model/run_time_error.h"
#include "model/types.h"

namespace quillane {

/// Whether ToInteger and ToSingle take the value.
bool FitsInteger(double value);
bool FitsSingle(double value);

/// The nearest Integer, halves to the even neighbour. Throws RunTimeError (overflow) naming `what`,
/// with this cause, when the value is outside -32768..32767 or not a number.
Integer ToInteger(double value, const char* what, ErrorCause cause = ErrorCause::kNone);

/// The nearest Single. Throws RunTimeError (overflow) naming `what` when the value passes its range
/// or is not a number.
Single ToSingle(double value, const char* what);

/// RunTimeError (floating point): `what` is not finite.
[[noreturn]] void ThrowFloatingPoint(const char* what, ErrorCause cause);

/// Hands the value on; throws RunTimeError (floating point) naming `what`, with this cause, when it
/// is infinite or not a number, as a division by zero, an invalid operation or an overflow leave
/// it.
template <std::floating_point Real>
Real Finite(Real value, const char* what, ErrorCause cause = ErrorCause::kNone) {
  if (!std::isfinite(value)) ThrowFloatingPoint(what, cause);
  return value;
}

}  // namespace quillane
