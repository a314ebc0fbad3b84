// The copy of the model that is written when the program ends unexpectedly or an opening fails.
#pragma once

#include <filesystem>
#include <optional>
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

/// Returns the text of the model file; none without a design domain or if the arrays do not fit the
/// counts.
std::optional<std::string> TextToKeep(const Model& model);

/// Detects unsaved changes: the text of the model file differs from the one last saved or opened.
class UnsavedWork {
 public:
  explicit UnsavedWork(const Model& model) : model_(model) {}

  /// Notes that the present model is in a file.
  void NoteKept() { kept_ = TextToKeep(model_); }

  /// Writes a rescue file if there are unsaved changes.
  void Rescue() noexcept;

 private:
  const Model& model_;
  std::optional<std::string> kept_;
};

}  // namespace quillane
