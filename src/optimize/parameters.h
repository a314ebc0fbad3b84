// The optimization parameters as a line of text.
#pragma once

#include <string>

#include "model/model.h"

namespace quillane {

/// "Stress Target = 120MPa   Epsilon = 3   Lambda = 0.05"
std::string ParameterSummary(const Model& model);

}  // namespace quillane
