#include "batch/outputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include "batch/console.h"
#include "batch/failure.h"
#include "model/platform.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

/// Returns whether the path is a pipe or device, which is written to and never replaced.
bool IsStream(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  return fs::is_fifo(status) || fs::is_character_file(status) || fs::is_socket(status);
}

/// Calls use(row, path) for every wanted output that is one file.
template <class Use>
void ForEachFile(const OutputPaths& paths, const Use& use) {
  for (const OutputRow& row : OutputTable()) {
    if (row.writing != Writing::kStepFolder && paths.Wants(row.output)) use(row, paths[row.output]);
  }
}

/// Returns the absolute target of a path; follows links even if their target does not exist.
fs::path Whole(const fs::path& path) {
  std::error_code error;
  return fs::weakly_canonical(fs::absolute(LinkTarget(path), error), error);
}

bool LeadToOneFile(const fs::path& one, const fs::path& other) {
  std::error_code error;
  return fs::equivalent(one, other, error) || Whole(one) == Whole(other);
}

bool IsFrameName(const fs::path& name) {
  const std::string text = name.string();
  return name == SeriesPath({}) ||
         (text.starts_with("frame-") && (text.ends_with(".png") || text.ends_with(".vtu")));
}

/// A file in use, and its name in messages.
struct InUse {
  fs::path path;
  std::string name;
};

/// Returns the models and the files behind the standard streams.
std::vector<InUse> InUseBefore(const BatchOptions& options) {
  std::vector<InUse> inUse = {
      {options.model == "-" ? StreamPath(stdin) : options.model, "the model"}};
  for (const fs::path& loadCase : options.loadCases) {
    inUse.push_back({loadCase == "-" ? StreamPath(stdin) : loadCase, "a load case"});
  }
  std::error_code error;
  const auto add = [&](std::FILE* stream, const char* name) {
    const fs::path path = StreamPath(stream);
    if (fs::is_regular_file(path, error)) inUse.push_back({path, name});
  };
  if (!options.quiet || WritesToStandardOutput(options.outputs)) add(stdout, "standard output");
  add(stderr, "standard error");
  return inUse;
}

[[noreturn]] void Refuse(const fs::path& path, const std::string& why) {
  throw Failure{kExitUsageOrFile, path.string() + ": " + why};
}

/// Only --save may replace the model, and no output another one. A device such as /dev/null takes
/// any number of outputs.
void RefuseOutputsThatAreOne(const BatchOptions& options) {
  std::vector<InUse> inUse = InUseBefore(options);
  const fs::path& frames = options.outputs[Output::kFrames];
  bool streamTaken = false;
  ForEachFile(options.outputs, [&](const OutputRow& row, const fs::path& file) {
    if (file == "-") {
      if (streamTaken) throw Failure{kExitUsageOrFile, "only one output can go to standard output"};
      streamTaken = true;
      return;
    }
    std::error_code error;
    const bool shared = fs::is_character_file(fs::status(file, error));
    for (const InUse& other : inUse) {
      const bool inPlace = row.output == Output::kSave && &other == &inUse.front() && IsFile(file);
      if (!shared && !inPlace && LeadToOneFile(file, other.path)) {
        Refuse(file, fmt::format("{} names the same file as {}", row.option, other.name));
      }
    }
    const fs::path name = Whole(file);
    if (!frames.empty() && name.parent_path() == Whole(frames) && IsFrameName(name.filename())) {
      Refuse(file, "this is the name of a frame");
    }
    inUse.push_back({file, row.option});
  });
}

/// Two runs that wrote their steps to one place would mix them.
void ClaimOrRefuse(const fs::path& path, bool isFolder) {
  if (!Claim(path, isFolder)) Refuse(path, "another run is writing to it");
}

/// Frames of another, longer run would end the film of this one.
void PrepareFrames(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (std::error_code unknown; !fs::is_directory(folder, unknown)) {
    Refuse(folder,
           "the folder cannot be created: " +
               (error ? error : std::make_error_code(std::errc::not_a_directory)).message());
  }
  ClaimOrRefuse(folder, true);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (!IsFrameName(entry.path().filename())) continue;
    Refuse(folder, fmt::format("the folder holds frames already, such as {}; choose a new one",
                               entry.path().filename().string()));
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

FreshFiles::~FreshFiles() {
  std::error_code error;
  for (const fs::path& file : files_) {
    if (fs::file_size(file, error) == 0) fs::remove(file, error);
  }
}

void TryOutputs(const BatchOptions& options, FreshFiles& fresh) {
  EndRunOnError("outputs", [&] { RefuseOutputsThatAreOne(options); });
  const fs::path& frames = options.outputs[Output::kFrames];
  if (!frames.empty()) EndRunOnError(frames.string(), [&] { PrepareFrames(frames); });
  ForEachFile(options.outputs, [&](const OutputRow& row, const fs::path& file) {
    if (!IsFile(file)) return;
    EndRunOnError(file.string(), [&] {
      TryReplaceFile(file);
      if (row.writing == Writing::kAtEnd) return;
      const fs::path target = Whole(file);
      const bool isNew = !fs::exists(target);
      ClaimOrRefuse(target, false);
      if (isNew) fresh.Add(target);
    });
  });
}

fs::path FramePath(const fs::path& folder, int step, const char* suffix) {
  return folder / fmt::format("frame-{:05}{}", step, suffix);
}

fs::path SeriesPath(const fs::path& folder) { return folder / "frames.pvd"; }

void WriteOutput(const fs::path& path, std::string_view content) {
  if (IsFile(path)) {
    ReplaceFile(path, content);
  } else {
    WriteNow(OpenStream(path).get(), content);
  }
}

Stream OpenStream(const fs::path& path) {
  if (path == "-") return {stdout, [](std::FILE*) { return 0; }};
  Stream stream(IsStream(path) ? OpenToWrite(path) : OpenFile(path, "wb"), std::fclose);
  if (!stream && errno == EINTR) throw Interrupted("interrupted while waiting for a reader");
  if (!stream) throw FileWriteError(SystemReason());
  return stream;
}

void WriteNow(std::FILE* stream, std::string_view content) {
  for (std::size_t at = 0; at < content.size(); at += kBytesAtOnce) {
    if (!WaitToWrite(stream)) throw Interrupted("interrupted while waiting for a reader");
    const std::string_view piece = content.substr(at, kBytesAtOnce);
    if (std::fwrite(piece.data(), 1, piece.size(), stream) != piece.size() ||
        std::fflush(stream) != 0) {
      throw FileWriteError("it cannot be written to: " + SystemReason());
    }
  }
}

}  // namespace quillane
