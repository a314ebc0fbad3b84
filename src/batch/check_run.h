// The run of --check.
#pragma once

#include "batch/options.h"

namespace quillane {

/// Prints one line per finding in the model and every load case. Returns the exit status. Throws
/// Failure.
int RunCheck(const BatchOptions& options);

}  // namespace quillane
