#include "batch/frames.h"

#include "batch/outputs.h"
#include "export/vtu.h"
#include "model/safe_file.h"

namespace quillane {

void Frames::Analysed(const Course& course) {
  if (course.Figures().solves > 1) return;
  startVolume_ = course.State().Volume;
  Write(course);
}

void Frames::Write(const Course& course) {
  const Model& model = course.State();
  const int step = course.Figures().steps;
  const auto write = [&](const char* suffix, const auto& content) {
    const std::filesystem::path frame = FramePath(options_.outputs[Output::kFrames], step, suffix);
    EndRunOnError(frame.string(), [&] { ReplaceFile(frame, content()); });
    return frame.filename().string();
  };
  write(".png", [&] { return PictureFile(options_, model, step, startVolume_); });
  if (!options_.outputs.Wants(Output::kVtu)) return;
  fields_.push_back(write(".vtu", [&] { return VtuText(model); }));
}

void Frames::Finish(std::vector<Failure>& faults) {
  if (fields_.empty()) return;
  const std::filesystem::path series = SeriesPath(options_.outputs[Output::kFrames]);
  CollectError(faults, series.string(), [&] { ReplaceFile(series, PvdText(fields_)); });
}

}  // namespace quillane
