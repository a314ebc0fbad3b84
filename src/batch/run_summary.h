// What a batch run tells at its end.
#pragma once

#include <string>
#include <vector>

#include "model/model.h"
#include "optimize/course.h"
#include "optimize/volume_search.h"

namespace quillane {

struct RunSummary {
  struct KeptStage {
    Stage stage;
    double volume = 0;  ///< after it, mm^3
  };

  CourseFigures figures;
  double startVolume = 0;          ///< of the first analysis, mm^3
  bool connected = true;           ///< every load has a way to supports that hold it
  std::optional<Repetition> rest;  ///< where rest was looked for and found
  std::vector<KeptStage> stages;
  std::vector<std::string> notes;  ///< how it ended, a line each
  std::string error;               ///< what ended the run before its end
  int exitStatus = 0;
};

/// How a search for a share of the volume ended, after so many stages.
std::string SearchNote(const VolumeSearch& search, double fraction, std::size_t stages);

/// The volume as a share of that at the start.
double VolumeFraction(const Model& model, const RunSummary& summary);

/// The lines for standard output.
std::string SummaryText(const Model& model, const RunSummary& summary);

/// The same and all values used, as one JSON object. modelName: as given on the command line.
std::string SummaryJson(const std::string& modelName, const Model& model,
                        const RunSummary& summary);

}  // namespace quillane
