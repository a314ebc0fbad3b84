// How a batch run ended: its last notes and its exit status.
#pragma once

#include "batch/run_summary.h"

namespace quillane {

/// What decides beside the figures.
struct RunEnd {
  bool filesWritten = true;  ///< all of them
  bool wishReached = true;   ///< of --volume-fraction or --until-steady
  int signal = 0;            ///< that ended the run; 0 for none
};

/// Adds the notes on solves, pieces and loads to the summary of a course that has ended, and sets
/// its exit status. Complains if the last solve did not converge.
void Judge(RunSummary& summary, const Model& model, const RunEnd& end);

}  // namespace quillane
