// The record of an optimization's course: one line a step.
#pragma once

#include <filesystem>
#include <fstream>

#include "model/model.h"
#include "optimize/course.h"

namespace quillane {

/// Renames an earlier history to the same name with "~" behind it, over one kept before. Does
/// nothing where path names no ordinary file. Throws RunTimeError (file).
void KeepEarlierHistory(const std::filesystem::path& path);

/// The history file: header "Iteration, Max, Avg, Min", then StepCount, MaxStress, AvgStress and
/// MinStress (MPa) as comma-separated lines ended by CR LF. Model::HistoryRecording is true exactly
/// while it is open.
class History : public CourseListener {
 public:
  /// Sets HistoryRecording, creates or empties the file, writes the header and a record of the
  /// present state. Throws RunTimeError (file), also where path names something other than an
  /// ordinary file.
  void Start(Model& model, const std::filesystem::path& path);

  /// Goes on with the file where its last record is that of the step before StepCount in the
  /// present state; else as Start.
  void Resume(Model& model, const std::filesystem::path& path);

  /// Appends a record if the model is recording; it is in the file when this returns. Throws
  /// RunTimeError (file) when the disk is full.
  void Record(const Model& model);

  /// Records every step, and no analysis.
  void Analysed(const Course&) override {}
  void Stepped(const Course& course) override { Record(course.State()); }

  /// Closes the file and clears HistoryRecording; harmless when nothing is recorded. Throws
  /// RunTimeError (file) when what was written did not reach the disk.
  void Close(Model& model);

 private:
  void WriteLine(const std::string& line);

  std::filesystem::path path_;
  std::ofstream file_;
};

}  // namespace quillane
