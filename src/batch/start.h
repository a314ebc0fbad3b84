// The model that a batch run starts from.
#pragma once

#include <string>
#include <vector>

#include "batch/options.h"
#include "optimize/load_cases.h"

namespace quillane {

/// Opens the model and its load cases, applies the options to them, and tries what the end of the
/// run would fail on otherwise: the parameters of the steps, the outline, the picture. Reports what
/// looks wrong in a model; ends a strict run then. Appends what is worth telling to `notes`. Throws
/// Failure.
void PrepareStart(const BatchOptions& options, Model& model, LoadCases& cases,
                  std::vector<std::string>& notes);

}  // namespace quillane
