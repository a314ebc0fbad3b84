// The summary of a batch run and its exit status.
#pragma once

#include <string>
#include <vector>

#include "export/outline_file.h"
#include "model/model.h"
#include "optimize/course.h"
#include "optimize/volume_search.h"

namespace quillane {

struct RunSummary {
  std::vector<std::string> files;  ///< as given: the model's, then one for each further load case
  CourseFigures figures;
  double startVolume = 0;          ///< of the first analysis, mm^3
  bool connected = true;           ///< every load of every case is connected to adequate supports
  std::optional<Repetition> rest;  ///< if --until-steady found it
  int pieces = 1;                  ///< separate ones
  std::optional<SearchResult> search;     ///< of --volume-fraction
  std::vector<LoadCaseResult> cases;      ///< at the end; none if there is only one
  std::vector<std::vector<int>> lost;     ///< nodes with a lost load, of each case
  double compliance = 0;                  ///< at the end, N mm; of all cases together
  std::vector<KeptStage> stages;          ///< of the search, in their order
  std::optional<OutlineFigures> outline;  ///< if one was written
  std::vector<std::string> remarks;       ///< on the command line
  std::vector<std::string> notes;         ///< one line each
  bool wishReached = true;                ///< of --volume-fraction or --until-steady
  std::string error;                      ///< what ended the run early
  int exitStatus = 0;
};

/// Adds the notes on solves, pieces, loads and a noted signal to the summary of a course that has
/// ended, and sets its exit status. filesWritten: whether every file was. Complains if the last
/// solve did not converge.
void Judge(RunSummary& summary, const Model& model, bool filesWritten);

/// Returns the lines for standard output.
std::string SummaryText(const Model& model, const RunSummary& summary);

/// Returns the same and all values used as one JSON object.
std::string SummaryJson(const Model& model, const RunSummary& summary);

}  // namespace quillane
