// One batch run from the opened model to the written files.
#pragma once

#include <csignal>

#include "batch/options.h"

namespace quillane {

inline constexpr int kExitDone = 0;
inline constexpr int kExitRunTimeError = 1;
inline constexpr int kExitUsageOrFile = 2;
inline constexpr int kExitInterrupted = 130;

/// Runs what the options ask for and returns the exit status. Errors go to standard error, the
/// summary to standard output. When `interrupted` becomes nonzero the run ends after the step at
/// hand, with all its files written.
int RunBatch(const BatchOptions& options, const volatile std::sig_atomic_t& interrupted);

}  // namespace quillane
