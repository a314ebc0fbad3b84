// Going on from where an earlier run stood.
#pragma once

#include <string>

#include "model/model.h"

namespace quillane {

/// Takes the states, potentials and StepCount of a table that CellTable wrote of this model, whole
/// or up to any later column. Throws ModelFileError, with the model unchanged, where the text is no
/// such table, or one of another grid or with other cells cut out.
void ResumeFrom(Model& model, const std::string& cellTable);

}  // namespace quillane
