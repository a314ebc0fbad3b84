// Where the outputs of a batch run go.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "batch/options.h"

namespace quillane {

/// Whether the path names a file that is replaced as a whole: no "-", pipe or device.
bool IsFile(const std::filesystem::path& path);

/// Whether some output goes to standard output.
bool WritesToStandardOutput(const OutputPaths& paths);

/// A pipe or a device: it is written into, never replaced.
bool IsStream(const std::filesystem::path& path);

/// Files created ahead of the run. Those that are still empty in the end are removed.
class FreshFiles {
 public:
  FreshFiles() = default;
  FreshFiles(const FreshFiles&) = delete;
  FreshFiles& operator=(const FreshFiles&) = delete;
  ~FreshFiles();

  void Add(std::filesystem::path file) { files_.push_back(std::move(file)); }

 private:
  std::vector<std::filesystem::path> files_;
};

/// Tries every output before the run: name, folder, permission; makes the folder of the frames.
/// Keeps other runs from the outputs that grow with the steps until the program ends, and adds
/// those it creates to `fresh`. Throws Failure where one cannot be written, where two lead to one
/// file, where one that is not --save leads to the model, where another run writes to it, or where
/// the folder holds frames already.
void TryOutputs(const BatchOptions& options, FreshFiles& fresh);

/// The file of a step, from 0; suffix: ".png" for its picture, ".vtu" for its fields.
std::filesystem::path FramePath(const std::filesystem::path& folder, int step, const char* suffix);

/// The file that lists the fields of every step.
std::filesystem::path SeriesPath(const std::filesystem::path& folder);

/// Replaces the file of this name by one with this content; writes into a pipe or device; "-" is
/// standard output. Throws FileWriteError; Interrupted as OpenStream and WriteNow.
void WriteOutput(const std::filesystem::path& path, std::string_view content);

/// An open stream, closed at its end unless it is standard output.
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Empties the file of this name, or opens the pipe or device; "-" is standard output. Throws
/// FileWriteError; Interrupted where a signal ends the wait for a reader.
Stream OpenStream(const std::filesystem::path& path);

/// Writes to an open stream and flushes it. Throws FileWriteError; Interrupted where nobody reads
/// and a signal is noted.
void WriteNow(std::FILE* stream, std::string_view content);

}  // namespace quillane
