// What the summary tells of an outline.
#pragma once

#include <string>
#include <vector>

#include "export/outline_file.h"

namespace quillane {

/// Appends a line for each thing that a workshop should know of an outline. Lengths in mm, to four
/// digits.
void AddOutlineNotes(const OutlineFigures& figures, std::vector<std::string>& notes);

}  // namespace quillane
