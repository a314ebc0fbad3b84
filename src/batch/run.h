// One batch run from the opened model to the written files.
#pragma once

#include <csignal>

#include "batch/options.h"

namespace quillane {

/// Runs what the options ask for and returns the exit status. Errors go to standard error, the
/// summary to standard output (to standard error where an output goes there). When `signal` becomes
/// nonzero, the run ends after the step at hand, with all its files written.
int RunBatch(const BatchOptions& options, const volatile std::sig_atomic_t& signal);

}  // namespace quillane
