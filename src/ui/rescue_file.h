// The copy of the model that the program leaves behind when an error ends it.
#pragma once

#include <filesystem>
#include <string>

#include "model/model.h"

namespace quillane {

struct RescueReport {
  std::filesystem::path path;  ///< absolute path of the rescue file; empty where none was written
  std::string failure;         ///< why none was written
};

/// Writes the model to "Rescue.model" in the current directory, or to "Rescue2.model",
/// "Rescue3.model" and so on where the name is taken, or in the temporary folder where the current
/// one takes no file. Never throws.
RescueReport WriteRescueFile(const Model& model) noexcept;

}  // namespace quillane
