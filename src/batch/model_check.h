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

struct ModelFindings {
  std::vector<Finding> shown;  ///< by line; of each kind the first few and then how many more
  int count = 0;               ///< of all
};

/// Returns everything in a model that the program reads but that is probably unintended. notes:
/// those of its reading.
ModelFindings CheckModel(const Model& model, const ReadingNotes& notes);

/// Returns "line 5: the thickness is not above 0".
std::string FindingText(const Finding& finding);

/// Returns one line for findings, of which there is at least one.
std::string FindingsText(const ModelFindings& findings);

}  // namespace quillane
