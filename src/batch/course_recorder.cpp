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
  if (!table_ || !tableFault_.empty()) return;
  try {
    WriteNow(table_.get(), line);
  } catch (const FileWriteError& error) {
    tableFault_ = options_.course.string() + ": " + error.what();
  }
}

std::vector<std::string> CourseRecorder::Finish() {
  progress_.Clear();
  std::vector<std::string> faults;
  const bool closed = !table_ || table_.get_deleter()(table_.release()) == 0;
  if (!closed && tableFault_.empty()) {
    tableFault_ = options_.course.string() + ": it could not be written to its end";
  }
  if (!tableFault_.empty()) faults.push_back(tableFault_);
  if (fields_.empty()) return faults;
  const std::filesystem::path series = SeriesPath(options_.frames);
  try {
    Named(series.string(), [&] { ReplaceFile(series, PvdText(fields_)); });
  } catch (const Failure& failure) {
    faults.push_back(failure.message);
  }
  return faults;
}

}  // namespace quillane
