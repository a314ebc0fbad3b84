// The model that a batch run starts from.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "batch/options.h"
#include "model/model_file.h"
#include "optimize/load_cases.h"

namespace quillane {

/// Returns the text of a file or pipe, or of standard input if path is "-". Throws ModelFileError
/// if it cannot be read or is longer than any model, Interrupted if a signal ends the wait for it.
std::string InputText(const std::filesystem::path& path);

struct ModelInput {
  Model model;
  ReadingNotes notes;
};

/// Returns the model of such a text. Throws ModelFileError.
ModelInput ModelFromText(const std::string& text);

/// Opens the model and its load cases, applies the options to them, and checks what would fail only
/// at the end of the run: the parameters of the steps, the outline, the picture. Complains of what
/// looks wrong in a model, which ends a strict run. Appends to `notes` what the summary should say.
/// Throws Failure.
void PrepareStart(const BatchOptions& options, Model& model, LoadCases& cases,
                  std::vector<std::string>& notes);

}  // namespace quillane
