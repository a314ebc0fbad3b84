// The pictures and fields of every step, one file each in a folder.
#pragma once

#include <string>
#include <vector>

#include "batch/failure.h"
#include "batch/options.h"
#include "optimize/course.h"

namespace quillane {

/// Writes the frames of --frames, number 0 for the first analysis. A frame that cannot be written
/// fails its step.
class Frames : public CourseListener {
 public:
  explicit Frames(const BatchOptions& options) : options_(options) {}

  void Analysed(const Course& course) override;
  void Stepped(const Course& course) override { Write(course); }

  /// Writes the file that lists the fields of every step, if there are any; adds errors to
  /// `faults`.
  void Finish(std::vector<Failure>& faults);

 private:
  void Write(const Course& course);

  const BatchOptions& options_;
  double startVolume_ = 0;           ///< of the first analysis, mm^3
  std::vector<std::string> fields_;  ///< file names, by step
};

}  // namespace quillane
