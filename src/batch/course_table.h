// The table of a course: one line for the first analysis and one for every step.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "batch/failure.h"
#include "batch/outputs.h"
#include "optimize/course.h"

namespace quillane {

/// Writes the table of --course, each line as soon as its step has succeeded. A table that can no
/// longer be written does not end the run.
class CourseTable : public CourseListener {
 public:
  /// path: "-" for standard output. The file is opened at the first analysis.
  explicit CourseTable(std::filesystem::path path) : path_(std::move(path)) {}

  void Analysed(const Course& course) override;
  void Stepped(const Course& course) override;

  /// Closes the table and adds errors to `faults`.
  void Finish(std::vector<Failure>& faults);

 private:
  void WriteLine(const std::string& line);

  std::filesystem::path path_;
  Stream stream_{nullptr, nullptr};
  std::vector<Failure> faults_;
};

}  // namespace quillane
