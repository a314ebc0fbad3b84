// What can be done about an analysis or step that failed, told in options and records.
#pragma once

#include <string>

#include "model/model.h"

namespace quillane {

/// " Lambda must not be 0: ..." for a model that failed; empty where nothing is known.
std::string Advice(const Model& model);

}  // namespace quillane
