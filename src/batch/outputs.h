// Where the outputs of a batch run go.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

#include "batch/options.h"

namespace quillane {

/// Whether the path names a file that is replaced as a whole: no "-", pipe or device.
bool IsFile(const std::filesystem::path& path);

/// Whether some output goes to standard output.
bool WritesToStandardOutput(const OutputPaths& paths);

/// Tries every output before the run: name, folder, permission; makes the folder of the frames.
/// Throws Failure where one cannot be written, where two bear one name, where one that is not
/// --save bears the model's, or where the frames would mix with others.
void TryOutputs(const BatchOptions& options);

/// The file of a step, from 0; suffix: ".png" for its picture, ".vtu" for its fields.
std::filesystem::path FramePath(const std::filesystem::path& folder, int step, const char* suffix);

/// The file that lists the fields of every step.
std::filesystem::path SeriesPath(const std::filesystem::path& folder);

/// Replaces the file of this name by one with this content; writes into a pipe or device; "-" is
/// standard output. Throws FileWriteError.
void WriteOutput(const std::filesystem::path& path, std::string_view content);

/// An open stream, closed at its end unless it is standard output.
using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Empties the file of this name, or opens the pipe or device; "-" is standard output. Throws
/// FileWriteError.
Stream OpenStream(const std::filesystem::path& path);

/// Writes to an open stream and empties its buffer. Throws FileWriteError.
void WriteNow(std::FILE* stream, std::string_view content);

}  // namespace quillane
