// What a batch run leaves of every step.
#pragma once

#include <string>
#include <vector>

#include "batch/options.h"
#include "batch/outputs.h"
#include "batch/progress_line.h"
#include "batch/run_summary.h"
#include "optimize/optimization_course.h"

namespace quillane {

/// Takes note of every analysis and step: counts for the summary, the course's table, the frames,
/// the line on the terminal. The table is on the disk up to the last step at any time.
class CourseRecorder {
 public:
  /// steps: how many will follow the analysis, -1 where nobody knows.
  CourseRecorder(const BatchOptions& options, RunSummary& summary, int steps);

  /// The first analysis stands, or another one of the same layout. Throws Failure.
  void Analysed(const Model& model, const SolveReport& report);
  void AnalysedAgain(const Model& model, const SolveReport& report);

  /// One more step stands. Throws Failure where its frame cannot be written.
  void Stepped(const Model& model, const SolveReport& report);

  /// `steps` steps were done at once, the last of them with this report.
  void Took(int steps, const SolveReport& report);

  /// Whether something is left of every step, so that none may be left out.
  bool RecordsSteps() const;

  const OptimizationCourse& Course() const { return course_; }
  ProgressLine& Progress() { return progress_; }

  /// Closes the table and lists the fields of every step. What could not be written.
  std::vector<std::string> Finish();

 private:
  void Count(const SolveReport& report);
  void Show(const Model& model, const SolveReport& report);
  void WriteFrames(const Model& model);
  void WriteLine(const std::string& line);

  const BatchOptions& options_;
  RunSummary& summary_;
  OptimizationCourse course_;
  ProgressLine progress_;
  Stream table_{nullptr, nullptr};
  std::vector<std::string> faults_;
  std::vector<std::string> fields_;  ///< their files, by step
};

}  // namespace quillane
