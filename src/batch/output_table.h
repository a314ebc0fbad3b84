// Everything that a batch run can write, one row each.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>

#include "model/model.h"

namespace quillane {

struct BatchOptions;
struct RunSummary;

/// In the order in which the help lists them.
enum class Output {
  kSave,
  kJson,
  kCourse,
  kHistory,
  kCells,
  kNodes,
  kImage,
  kFrames,
  kOutline,
  kVtu,
  kCount
};

/// The paths of all outputs: empty if not wanted, "-" for standard output.
class OutputPaths {
 public:
  std::filesystem::path& operator[](Output output) {
    return paths_[static_cast<std::size_t>(output)];
  }
  const std::filesystem::path& operator[](Output output) const {
    return paths_[static_cast<std::size_t>(output)];
  }
  bool Wants(Output output) const { return !(*this)[output].empty(); }

 private:
  std::array<std::filesystem::path, static_cast<std::size_t>(Output::kCount)> paths_;
};

/// When an output is written, and to what.
enum class Writing {
  kAtEnd,       ///< once, to a file, a stream or a pipe
  kSteps,       ///< something of every step, likewise
  kStepFile,    ///< something of every step, to an ordinary file
  kStepFolder,  ///< files for every step in a folder
};

struct OutputRow {
  Output output;
  Writing writing;
  const char* group;   ///< of options, as the help heads it
  const char* option;  ///< its name, with the dashes
  const char* type;    ///< of its value, as the help shows it
  const char* help;
  /// Returns the content that is written from the final model, and may add notes to the summary.
  /// Null for what is written during the run or after everything else.
  std::string (*content)(const BatchOptions&, const Model&, RunSummary&) = nullptr;
};

inline constexpr const char* kFileGroup = "Files (- is standard output)";
inline constexpr const char* kPictureGroup = "Pictures";
inline constexpr const char* kExportGroup = "For other programs";

/// One row for every Output, in their order.
std::span<const OutputRow> OutputTable();

/// Returns whether something is written of every step.
bool RecordsSteps(const OutputPaths& paths);

/// Returns the picture with its legend as PNG. Its label, if wanted, names the step and the volume
/// as a share of startVolume (mm^3). Throws FileWriteError if it cannot be encoded, and as
/// RenderPicture.
std::string PictureFile(const BatchOptions& options, const Model& model, int step,
                        double startVolume);

}  // namespace quillane
