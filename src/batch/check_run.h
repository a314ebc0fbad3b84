// The run that only tells what looks wrong in the models.
#pragma once

#include "batch/options.h"

namespace quillane {

/// Prints a line a finding, of the model and of every load case. Returns the exit status. Throws
/// Failure.
int RunCheck(const BatchOptions& options);

}  // namespace quillane
