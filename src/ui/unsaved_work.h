// Changes of the model that are in no file.
#pragma once

#include <optional>
#include <string>

#include "model/model.h"

namespace quillane {

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
