// The record of an optimization's course: one line a step.
#pragma once

#include <filesystem>
#include <fstream>

#include "model/model.h"
#include "optimize/course.h"

namespace quillane {

/// Renames an earlier history by appending "~" to its name, replacing one kept before. Does nothing
/// if path does not name an ordinary file. Throws RunTimeError (file).
void KeepEarlierHistory(const std::filesystem::path& path);

/// The history file: header "Iteration, Max, Avg, Min", then StepCount, MaxStress, AvgStress and
/// MinStress (MPa) as comma-separated lines ended by CR LF. Model::HistoryRecording is true exactly
/// while it is open.
class History : public CourseListener {
 public:
  /// Sets HistoryRecording, creates or empties the file, writes the header and a record of the
  /// present state. Throws RunTimeError (file), also if path names something other than an ordinary
  /// file.
  void Start(Model& model, const std::filesystem::path& path);

  /// Continues the file if its last record is that of the present state at the step before
  /// StepCount; otherwise calls Start.
  void Resume(Model& model, const std::filesystem::path& path);

  /// Appends a record and flushes it to the file if the model is recording. Throws RunTimeError
  /// (file) if it cannot be written.
  void Record(const Model& model);

  /// Records every step, and no analysis.
  void Analysed(const Course&) override {}
  void Stepped(const Course& course) override { Record(course.State()); }

  /// Closes the file and clears HistoryRecording; does nothing else if no file is open. Throws
  /// RunTimeError (file) if not all records could be written.
  void Close(Model& model);

 private:
  void WriteLine(const std::string& line);

  std::filesystem::path path_;
  std::ofstream file_;
};

}  // namespace quillane
