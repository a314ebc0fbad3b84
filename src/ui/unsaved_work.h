// What of the model no file holds.
#pragma once

#include <optional>
#include <string>

#include "model/model.h"

namespace quillane {

/// The text of the model's file; none without a design domain or for arrays that do not fit their
/// counts.
std::optional<std::string> TextToKeep(const Model& model);

/// Tells unsaved changes: the text of the model's file differs from the one last kept.
class UnsavedWork {
 public:
  explicit UnsavedWork(const Model& model) : model_(model) {}

  /// Notes that the model as it stands is in a file.
  void NoteKept() { kept_ = TextToKeep(model_); }

  /// Writes unsaved changes into a rescue file, and nothing where there are none.
  void Rescue() noexcept;

 private:
  const Model& model_;
  std::optional<std::string> kept_;
};

}  // namespace quillane
