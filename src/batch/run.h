// One batch run from the opened model to the written files.
#pragma once

#include "batch/options.h"

namespace quillane {

/// Runs what the options ask for and returns the exit status. Errors go to standard error, the
/// summary to standard output, or to standard error if an output goes to standard output. Once a
/// signal is noted (CatchSignals), the run ends after the present step, with all its files written.
int RunBatch(const BatchOptions& options);

/// Runs --check instead: prints a line for each finding in the model and every load case. Returns
/// the exit status. Throws Failure.
int RunCheck(const BatchOptions& options);

}  // namespace quillane
