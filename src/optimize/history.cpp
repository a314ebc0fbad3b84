// Writing of the history file.
#include "optimize/history.h"

#include <string>

#include "model/number_text.h"
#include "model/run_time_error.h"

namespace quillane {

void History::WriteLine(const std::string& line) {
  file_ << line << "\r\n";
  if (!file_) {
    throw RunTimeError(ErrorKind::kFile, "the history " + path_.string() + " cannot be written",
                       "See that its folder can be written to and the disk has room.");
  }
}

void History::Start(Model& model, const std::filesystem::path& path) {
  model.HistoryRecording = kTrue;
  path_ = path;
  file_.clear();
  file_.open(path, std::ios::binary | std::ios::trunc);
  WriteLine("Iteration, Max, Avg, Min");
  Record(model);
}

void History::Record(const Model& model) {
  if (model.HistoryRecording == 0) return;
  WriteLine(GeneralText(int{model.StepCount}) + "," + GeneralText(model.MaxStress) + "," +
            GeneralText(model.AvgStress) + "," + GeneralText(model.MinStress));
}

void History::Close(Model& model) {
  model.HistoryRecording = 0;
  if (!file_.is_open()) return;
  file_.close();
  if (!file_) {
    throw RunTimeError(ErrorKind::kFile,
                       "the history " + path_.string() + " could not be written to its end",
                       "See that the disk has room.");
  }
}

}  // namespace quillane
