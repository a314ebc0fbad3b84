// The copy of the model that the program leaves behind where the model itself is lost.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "model/model.h"

namespace quillane {

struct RescueReport {
  std::filesystem::path path;  ///< absolute path of the rescue file; empty where none was written
  std::string failure;         ///< why none was written
};

/// Writes the text of a model file to "Rescue.model" in the current directory, or to
/// "Rescue2.model", "Rescue3.model" and so on where the name is taken, or in the temporary folder
/// where the current one takes no file. Never throws.
RescueReport WriteRescueFile(std::string_view text) noexcept;

/// Likewise the model as it is.
RescueReport WriteRescueFile(const Model& model) noexcept;

}  // namespace quillane
