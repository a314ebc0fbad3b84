// The progress of a batch run, shown in one line of a terminal.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "optimize/course.h"

namespace quillane {

/// Draws step, volume, a progress bar and the time left over one terminal line.
class ProgressLine : public CourseListener {
 public:
  /// shown: whether to print at all. steps: how many will follow the analysis; -1 if unknown.
  ProgressLine(std::FILE* terminal, bool shown, int steps);
  ~ProgressLine() override { Clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void Analysed(const Course& course) override;
  void Stepped(const Course& course) override {
    Show(course.State(), course.Figures().steps - first_);
  }

  /// Shows the state after `done` steps. prefix: text before it, such as a stage.
  void Show(const Model& model, int done, const std::string& prefix = {});

  /// Clears the line, so that other output starts on an empty one.
  void Clear();

 private:
  std::FILE* terminal_;
  bool shown_;
  bool lineDrawn_ = false;
  int steps_;
  int first_ = 0;  ///< steps of the run that this one continues
  double startVolume_ = 0;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point lastDrawn_{};
};

}  // namespace quillane
