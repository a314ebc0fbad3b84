// What a batch run tells at its end.
#pragma once

#include <string>
#include <vector>

#include "export/outline_file.h"
#include "model/model.h"
#include "optimize/course.h"
#include "optimize/volume_search.h"

namespace quillane {

struct RunSummary {
  CourseFigures figures;
  double startVolume = 0;          ///< of the first analysis, mm^3
  bool connected = true;           ///< every load of every case is connected to adequate supports
  std::optional<Repetition> rest;  ///< where rest was looked for and found
  int pieces = 1;                  ///< separate ones
  std::optional<SearchResult> search;     ///< where a wished volume was searched for
  std::vector<LoadCaseResult> cases;      ///< at the end; none where there is but one
  std::vector<std::string> caseFiles;     ///< of these
  std::vector<std::vector<int>> lost;     ///< nodes with a lost load, of each case
  double compliance = 0;                  ///< at the end, N mm; of all cases together
  std::vector<KeptStage> stages;          ///< of the search, as they were done
  std::optional<OutlineFigures> outline;  ///< where one was written
  std::vector<std::string> remarks;       ///< on the command line, told before the run
  std::vector<std::string> notes;         ///< how it ended, a line each
  std::string error;                      ///< what ended the run early
  int exitStatus = 0;
};

/// The volume as a share of that at the start.
double VolumeFraction(const Model& model, const RunSummary& summary);

/// The lines for standard output.
std::string SummaryText(const Model& model, const RunSummary& summary);

/// The same and all values used, as one JSON object. modelName: as given on the command line.
std::string SummaryJson(const std::string& modelName, const Model& model,
                        const RunSummary& summary);

}  // namespace quillane
