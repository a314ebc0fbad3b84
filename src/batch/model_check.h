// What looks wrong in a model, be it written by hand or by a script.
#pragma once

#include <string>
#include <vector>

#include "model/model_file.h"

namespace quillane {

struct Finding {
  int line = 0;  ///< from 1; 0 where it is in no one line
  std::string reason;
};

/// Returns everything in a model that the program reads but that is probably unintended: in the
/// order of the lines, of each kind the first few and then how many more. notes: those of its
/// reading.
std::vector<Finding> CheckModel(const Model& model, const ReadingNotes& notes);

}  // namespace quillane
