#include "batch/course_recorder.h"

#include "batch/failure.h"
#include "batch/tables.h"
#include "export/vtu.h"

namespace quillane {

CourseRecorder::CourseRecorder(const BatchOptions& options, RunSummary& summary, int steps)
    : options_(options), summary_(summary), progress_(stderr, !options.quiet, steps) {}

void CourseRecorder::Analysed(const Model& model, const SolveReport& report) {
  if (!options_.course.empty()) {
    Named(options_.course.string(), [&] { table_ = OpenStream(options_.course); });
    WriteLine(CourseHeader());
  }
  summary_.startVolume = model.Volume;
  AnalysedAgain(model, report);
  Show(model, report);
}

void CourseRecorder::AnalysedAgain(const Model& model, const SolveReport& report) {
  course_.Begin(model, report);
  Count(report);
}

void CourseRecorder::Stepped(const Model& model, const SolveReport& report) {
  ++summary_.steps;
  course_.Add(model, report);
  Count(report);
  Show(model, report);
}

void CourseRecorder::Took(int steps, const SolveReport& report) {
  summary_.steps += steps;
  summary_.solves += steps + 1;
  summary_.lastSolve = report;
}

bool CourseRecorder::RecordsSteps() const {
  return !options_.history.empty() || !options_.course.empty() || !options_.frames.empty();
}

void CourseRecorder::Count(const SolveReport& report) {
  summary_.lastSolve = report;
  ++summary_.solves;
  if (!report.converged && summary_.unconvergedSolves++ == 0) {
    summary_.firstUnconverged = summary_.steps;
  }
}

void CourseRecorder::Show(const Model& model, const SolveReport& report) {
  const int step = summary_.steps;
  progress_.Show(model, step);
  if (table_) WriteLine(CourseLine(model, report, step, course_.CellsChanged()));
  if (!options_.frames.empty()) WriteFrames(model);
}

void CourseRecorder::WriteFrames(const Model& model) {
  const auto write = [&](const char* suffix, const auto& content) {
    const std::filesystem::path frame = FramePath(options_.frames, summary_.steps, suffix);
    Named(frame.string(), [&] { ReplaceFile(frame, content()); });
    return frame.filename().string();
  };
  write(".png", [&] { return PictureFile(options_, model, summary_); });
  if (options_.vtu.empty()) return;
  fields_.push_back(write(".vtu", [&] { return VtuText(model); }));
}

void CourseRecorder::WriteLine(const std::string& line) {
  if (!table_ || !faults_.empty()) return;
  Tried(faults_, options_.course.string(), [&] { WriteNow(table_.get(), line); });
}

std::vector<std::string> CourseRecorder::Finish() {
  progress_.Clear();
  const bool closed = !table_ || table_.get_deleter()(table_.release()) == 0;
  if (!closed && faults_.empty()) {
    faults_.push_back(options_.course.string() + ": it could not be written to its end");
  }
  if (fields_.empty()) return faults_;
  const std::filesystem::path series = SeriesPath(options_.frames);
  Tried(faults_, series.string(), [&] { ReplaceFile(series, PvdText(fields_)); });
  return faults_;
}

}  // namespace quillane
