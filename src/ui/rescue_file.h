// The copy of the model that is written when the program ends unexpectedly.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/model.h"

namespace quillane {

struct RescueReport {
  std::filesystem::path path;  ///< absolute path of the rescue file; empty if none was written
  std::string failure;         ///< why none was written
};

/// Writes the text of a model file to "Rescue.model" in the current directory, or to
/// "Rescue2.model", "Rescue3.model" and so on if the name is taken, or to the temporary folder if
/// the current one is not writable. Never throws.
RescueReport WriteRescueFile(std::string_view text) noexcept;

/// Does the same for the model in its present state.
RescueReport WriteRescueFile(const Model& model) noexcept;

}  // namespace quillane
