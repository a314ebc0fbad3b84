#include "ui/unsaved_work.h"

#include <exception>

#include "model/model_file.h"
#include "model/run_time_error.h"
#include "ui/rescue_file.h"

namespace quillane {

std::optional<std::string> TextToKeep(const Model& model) {
  if (model.DomainDefined == 0) return std::nullopt;
  try {
    return ModelFileText(model);
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

void UnsavedWork::Rescue() noexcept {
  try {
    std::optional<std::string> text = TextToKeep(model_);
    if (!text || text == kept_) return;
    WriteRescueFile(*text);
    kept_ = std::move(text);
  } catch (const std::exception&) {  // no memory for the text
  }
}

}  // namespace quillane
