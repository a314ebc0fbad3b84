// Optimization parameters from typed text.
#pragma once

#include <string>
#include <string_view>

#include "model/model.h"

namespace quillane {

/// The conversions of typed text: the leading number, then the parameter's own type. Throw
/// RunTimeError (overflow) where it does not fit.
Single StressTargetFromText(std::string_view text);
Integer EpsilonFromText(std::string_view text);
Single LambdaFromText(std::string_view text);

/// "Stress Target = 120MPa   Epsilon = 3   Lambda = 0.05"
std::string ParameterSummary(const Model& model);

}  // namespace quillane
