// The files that tell what stands at the end of a run.
#pragma once

#include <string>
#include <vector>

#include "batch/options.h"
#include "batch/run_summary.h"
#include "model/model.h"

namespace quillane {

/// Writes every wanted file of the final model. One that fails does not keep the others from being
/// written; returns what went wrong, a sentence each. What else is worth telling becomes a note of
/// the summary.
std::vector<std::string> WriteFinalFiles(const BatchOptions& options, const Model& model,
                                         RunSummary& summary);

}  // namespace quillane
