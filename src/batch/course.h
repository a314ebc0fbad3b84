// The course of a batch run, shown in one line of a terminal.
#pragma once

#include <chrono>
#include <cstdio>

#include "model/model.h"

namespace quillane {

/// Draws step, volume, stresses, a progress bar and the time left over one terminal line.
class Course {
 public:
  /// shown: whether to print at all. steps: how many steps will follow the analysis.
  Course(std::FILE* terminal, bool shown, int steps);
  ~Course() { Clear(); }
  Course(const Course&) = delete;
  Course& operator=(const Course&) = delete;

  /// Shows the state after `done` steps.
  void Show(const Model& model, int done);

  /// Wipes the line, so that other output starts on a clean one.
  void Clear();

 private:
  std::FILE* terminal_;
  bool shown_;
  bool lineDrawn_ = false;
  int steps_;
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::chrono::steady_clock::time_point lastDrawn_{};
};

}  // namespace quillane
