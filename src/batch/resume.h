// Continues an earlier run.
#pragma once

#include <string>

#include "model/model.h"

namespace quillane {

/// Sets states, potentials and StepCount from a table that CellTable wrote of this model; further
/// columns are ignored. Throws ModelFileError and leaves the model unchanged if the text is no such
/// table, or one of another grid or with other cells cut out.
void ResumeFrom(Model& model, const std::string& cellTable);

}  // namespace quillane
