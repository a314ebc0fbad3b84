// What looks wrong in a model file, be it written by hand or by a script.
#pragma once

#include <string>
#include <vector>

namespace quillane {

struct Finding {
  int line = 0;  ///< from 1; 0 where it is in no one line
  std::string reason;
};

/// Everything in a model's text that the program would read, but that is hardly meant: in the order
/// of the lines, of each kind the first few and then how many more. A text that cannot be read as a
/// model at all has one finding.
std::vector<Finding> CheckModelText(const std::string& text);

}  // namespace quillane
