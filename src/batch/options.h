// The command line of quillane-batch.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "batch/output_table.h"
#include "export/outline_file.h"
#include "image/picture.h"
#include "model/types.h"
#include "optimize/side_by_side.h"

namespace quillane {

/// What the command line asks for.
struct BatchOptions {
  std::filesystem::path model;                   ///< "-" for standard input
  std::vector<std::filesystem::path> loadCases;  ///< beside the model's own; "-" likewise
  bool check = false;
  bool strict = false;  ///< do not run a model that looks wrong

  std::optional<int> steps;
  bool untilSteady = false;
  std::optional<double> volumeFraction;
  bool keepLoads = true;               ///< a search keeps the cells at loads
  int jobs = AllCores();               ///< threads
  std::filesystem::path resume;        ///< a table of cells to continue from
  bool dropLoose = false;              ///< leave out pieces that neither carry a load nor are held
  std::optional<Single> stressTarget;  ///< MPa
  std::optional<Integer> epsilon;
  std::optional<Single> lambda;

  OutputPaths outputs;
  std::optional<OutlineFormat> outlineFormat;  ///< known if an outline is wanted
  std::optional<SmoothEdges> smooth;           ///< the outline
  PictureOptions picture;
  bool label = false;  ///< write step and volume into the pictures
  bool quiet = false;
  std::vector<std::string> remarks;  ///< options without effect or with unusual values
};

/// Reads the command line. If it asks for help or the version or is wrong, prints the answer, sets
/// `exitStatus` (0 or 2) and returns nothing.
std::optional<BatchOptions> ParseOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace quillane
