// The files that tell what stands at the end of a run.
#pragma once

#include <string>
#include <vector>

#include "batch/options.h"
#include "batch/run_summary.h"
#include "model/model.h"

namespace quillane {

/// Writes every wanted file of the final model. One that fails does not keep the others from being
/// written; returns what went wrong, a sentence each.
std::vector<std::string> WriteFinalFiles(const BatchOptions& options, const Model& model,
                                         const RunSummary& summary);

}  // namespace quillane
