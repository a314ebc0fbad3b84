#include "optimize/history.h"

#include <iterator>
#include <string>
#include <system_error>

#include "model/number_text.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLineEnd = "\r\n";
constexpr const char* kHeader = "Iteration, Max, Avg, Min";

std::string RecordText(const Model& model, int step) {
  return GeneralText(step) + "," + GeneralText(model.MaxStress) + "," +
         GeneralText(model.AvgStress) + "," + GeneralText(model.MinStress);
}

[[noreturn]] void Fail(const fs::path& path, const std::string& what,
                       ErrorCause cause = ErrorCause::kFileUnwritable) {
  throw RunTimeError(ErrorKind::kFile, "the history " + path.string() + " " + what, cause);
}

}  // namespace

void KeepEarlierHistory(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return;
  fs::path kept = path;
  kept += "~";
  fs::rename(path, kept, error);
  if (error) Fail(path, "cannot be kept as " + kept.string() + ": " + error.message());
}

void History::WriteLine(const std::string& line) {
  file_ << line << kLineEnd << std::flush;
  if (!file_) Fail(path_, "cannot be written: " + SystemReason());
}

void History::Start(Model& model, const fs::path& path) {
  model.HistoryRecording = kTrue;
  path_ = path;
  std::error_code error;
  const fs::file_status old = fs::status(path, error);
  if (fs::exists(old) && !fs::is_regular_file(old)) {
    Fail(path_, "cannot be written: it is not an ordinary file", ErrorCause::kNotAFile);
  }
  file_.clear();
  file_.open(path, std::ios::binary | std::ios::trunc);
  WriteLine(kHeader);
  Record(model);
}

void History::Resume(Model& model, const fs::path& path) {
  const std::string record = RecordText(model, model.StepCount - 1) + kLineEnd;
  std::ifstream earlier(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(earlier), {}};
  if (!text.starts_with(kHeader) || !text.ends_with(kLineEnd + record)) {
    Start(model, path);
    return;
  }
  model.HistoryRecording = kTrue;
  path_ = path;
  file_.clear();
  file_.open(path, std::ios::binary | std::ios::app);
  if (!file_) Fail(path_, "cannot be written: " + SystemReason());
}

void History::Record(const Model& model) {
  if (model.HistoryRecording != 0) WriteLine(RecordText(model, model.StepCount));
}

void History::Close(Model& model) {
  model.HistoryRecording = 0;
  if (!file_.is_open()) return;
  file_.close();
  if (!file_) Fail(path_, "could not be written completely: " + SystemReason());
}

}  // namespace quillane
