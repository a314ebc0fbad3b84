// Finds what looks wrong in a model, as after writing it by hand or by a script.
#pragma once

#include <string>
#include <vector>

#include "model/model_file.h"

namespace quillane {

struct Finding {
  int line = 0;  ///< from 1; 0 if it is not in one line
  std::string reason;
};

struct ModelFindings {
  std::vector<Finding> shown;  ///< by line; of each kind the first few and the number of the others
  int count = 0;               ///< of all
};

/// Returns everything in a readable model that is probably unintended. notes: those of its reading.
ModelFindings CheckModel(const Model& model, const ReadingNotes& notes);

/// Returns "line 5: the thickness is not above 0".
std::string FindingText(const Finding& finding);

/// Returns one line for findings, of which there is at least one.
std::string FindingsText(const ModelFindings& findings);

}  // namespace quillane
