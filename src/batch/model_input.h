// The model a batch run starts from.
#pragma once

#include <filesystem>
#include <string>

#include "model/model_file.h"

namespace quillane {

/// The text of a file or pipe, or of standard input where path is "-". Throws ModelFileError where
/// it cannot be read or is longer than any model, Interrupted where a signal ends the wait for it.
std::string InputText(const std::filesystem::path& path);

struct ModelInput {
  Model model;
  ReadingNotes notes;
};

/// Returns the model of such a text. Throws ModelFileError.
ModelInput ModelFromText(const std::string& text);

/// Returns the sentence for a difference that LoadCaseFault finds.
inline std::string NotACase(const std::string& difference) {
  return "not a load case of this model: " + difference;
}

}  // namespace quillane
