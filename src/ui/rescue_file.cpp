#include "ui/rescue_file.h"

#include <exception>

#include "model/model_file.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr int kMostRescueFiles = 10000;

/// Returns the first unused name in the folder.
fs::path FreeName(const fs::path& folder) {
  for (int number = 1; number <= kMostRescueFiles; ++number) {
    const std::string suffix = number == 1 ? std::string() : std::to_string(number);
    fs::path path = folder / ("Rescue" + suffix + ".model");
    if (!fs::exists(fs::symlink_status(path))) return path;
  }
  throw FileWriteError("too many rescue files in " + folder.string());
}

fs::path WriteInto(const fs::path& folder, std::string_view text) {
  fs::path path = FreeName(folder);
  ReplaceFile(path, text);
  return path;
}

}  // namespace

RescueReport WriteRescueFile(std::string_view text) noexcept {
  try {
    try {
      return {WriteInto(fs::current_path(), text), {}};
    } catch (const std::exception&) {
      return {WriteInto(fs::temp_directory_path(), text), {}};
    }
  } catch (const std::exception& error) {
    return {{}, error.what()};
  }
}

RescueReport WriteRescueFile(const Model& model) noexcept {
  try {
    return WriteRescueFile(ModelFileText(model));
  } catch (const std::exception& error) {
    return {{}, error.what()};
  }
}

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
