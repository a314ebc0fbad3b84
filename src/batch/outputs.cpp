#include "batch/outputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include "batch/failure.h"
#include "model/platform.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

/// Calls use(row, path) for every wanted output that is one file.
template <class Use>
void ForEachFile(const OutputPaths& paths, const Use& use) {
  for (const OutputRow& row : OutputTable()) {
    if (!row.isFolder && paths.Wants(row.output)) use(row, paths[row.output]);
  }
}

/// A pipe or a device: it is written into, never replaced.
bool IsStream(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::is_fifo(status) || fs::is_character_file(status) || fs::is_socket(status);
}

fs::path Whole(const fs::path& path) {
  std::error_code error;
  return fs::weakly_canonical(fs::absolute(path, error), error);
}

bool IsFrameName(const fs::path& name) {
  const std::string text = name.string();
  return name == SeriesPath({}) ||
         (text.starts_with("frame-") && (text.ends_with(".png") || text.ends_with(".vtu")));
}

/// Only --save may replace the model, and no output another.
void RefuseDoubleNames(const BatchOptions& options) {
  std::vector<fs::path> named = {Whole(options.model)};
  const fs::path& frames = options.outputs[Output::kFrames];
  ForEachFile(options.outputs, [&](const OutputRow& row, const fs::path& file) {
    const fs::path name = file == "-" ? file : Whole(file);
    const bool inPlace = row.output == Output::kSave && name == named.front();
    const bool taken = std::ranges::find(named, name) != named.end();
    if (taken && !inPlace && !IsStream(file)) {
      throw Failure{kExitUsageOrFile, file == "-" ? "only one output can go to standard output"
                                                  : file.string() + ": two files of one name"};
    }
    if (!frames.empty() && name.parent_path() == Whole(frames) && IsFrameName(name.filename())) {
      throw Failure{kExitUsageOrFile, file.string() + ": this is the name of a frame"};
    }
    named.push_back(name);
  });
}

/// Frames of another, longer run would become the end of this one's film.
void PrepareFrames(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (!fs::is_directory(folder, error)) {
    throw Failure{kExitUsageOrFile, folder.string() + ": the folder cannot be made"};
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (!IsFrameName(entry.path().filename())) continue;
    throw Failure{kExitUsageOrFile,
                  fmt::format("{}: the folder holds frames already, such as {}; take a new one",
                              folder.string(), entry.path().filename().string())};
  }
  TryReplaceFile(FramePath(folder, 0, ".png"));
}

}  // namespace

bool IsFile(const fs::path& path) { return path != "-" && !IsStream(path); }

bool WritesToStandardOutput(const OutputPaths& paths) {
  bool writes = false;
  ForEachFile(paths, [&](const OutputRow&, const fs::path& file) { writes |= file == "-"; });
  return writes;
}

void TryOutputs(const BatchOptions& options) {
  RefuseDoubleNames(options);
  const fs::path& frames = options.outputs[Output::kFrames];
  if (!frames.empty()) Named(frames.string(), [&] { PrepareFrames(frames); });
  ForEachFile(options.outputs, [](const OutputRow&, const fs::path& file) {
    if (file != "-" && !IsStream(file)) Named(file.string(), [&] { TryReplaceFile(file); });
  });
}

fs::path FramePath(const fs::path& folder, int step, const char* suffix) {
  return folder / fmt::format("frame-{:05}{}", step, suffix);
}

fs::path SeriesPath(const fs::path& folder) { return folder / "frames.pvd"; }

void WriteOutput(const fs::path& path, std::string_view content) {
  if (path == "-" || IsStream(path)) {
    WriteNow(OpenStream(path).get(), content);
  } else {
    ReplaceFile(path, content);
  }
}

Stream OpenStream(const fs::path& path) {
  if (path == "-") return {stdout, [](std::FILE*) { return 0; }};
  Stream stream(OpenFile(path, "wb"), std::fclose);
  if (!stream) throw FileWriteError(std::generic_category().message(errno));
  return stream;
}

void WriteNow(std::FILE* stream, std::string_view content) {
  const std::size_t written = std::fwrite(content.data(), 1, content.size(), stream);
  if (written != content.size() || std::fflush(stream) != 0) {
    throw FileWriteError(std::string("it cannot be written to: ") +
                         std::generic_category().message(errno));
  }
}

}  // namespace quillane
