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

/// Returns whether the path names a file that is replaced as a whole: not "-", a pipe or a device.
bool IsFile(const std::filesystem::path& path);

/// Returns whether some output goes to standard output.
bool WritesToStandardOutput(const OutputPaths& paths);

/// Files created before the run. Removes those that are still empty at the end.
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

/// Checks name, folder and permission of every output before the run; creates the folder of the
/// frames. Locks the outputs that grow with the steps, and adds those it creates to `fresh`. Throws
/// Failure if one cannot be written, two name one file, one other than --save names the model,
/// another run writes to one, or the folder already holds frames.
void TryOutputs(const BatchOptions& options, FreshFiles& fresh);

/// Returns the file of a step, from 0; suffix: ".png" for its picture, ".vtu" for its fields.
std::filesystem::path FramePath(const std::filesystem::path& folder, int step, const char* suffix);

/// Returns the file that lists the fields of every step.
std::filesystem::path SeriesPath(const std::filesystem::path& folder);

/// Replaces the file by one with this content, or writes to the pipe or device; "-" is standard
/// output. Throws FileWriteError, and Interrupted as OpenStream and WriteNow.
void WriteOutput(const std::filesystem::path& path, std::string_view content);

/// An open stream, closed at its end unless it is standard output.
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Creates or empties the file, or opens the pipe or device; "-" is standard output. Throws
/// FileWriteError, and Interrupted if a signal ends the wait for a reader.
Stream OpenStream(const std::filesystem::path& path);

/// Writes to an open stream and flushes it. Throws FileWriteError, and Interrupted if nobody reads
/// it and a signal is noted.
void WriteNow(std::FILE* stream, std::string_view content);

}  // namespace quillane
