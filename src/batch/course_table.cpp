#include "batch/course_table.h"

#include <fmt/format.h>

#include "model/number_text.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

/// Returns the titles of the further columns, ",name_1" and so on, if there are several load cases.
std::string CaseTitles(const Course& course) {
  std::string text;
  for (std::size_t k = 1; k <= course.Cases().Results().size(); ++k) {
    text += fmt::format(",max_stress_{0},compliance_{0}", k);
  }
  return text;
}

std::string CaseFields(const Course& course) {
  std::string text;
  for (const LoadCaseResult& result : course.Cases().Results()) {
    text += fmt::format(",{:.17g},{:.17g}", result.maxStress, result.compliance);
  }
  return text;
}

std::string Line(const Course& course) {
  const Model& model = course.State();
  const CourseFigures& figures = course.Figures();
  const SolveReport& solve = figures.lastSolve;
  return fmt::format("{},{},{:.17g},{},{:.17g},{:.17g},{:.17g},{},{:.3g},{:d},{:d},{:.17g}{}\n",
                     figures.steps, GeneralText(model.StressTarget), model.Volume,
                     figures.cellsChanged, model.MaxStress, model.AvgStress, model.MinStress,
                     solve.iterations, solve.trueResidual, solve.converged, course.Connected(),
                     course.Compliance(), CaseFields(course));
}

}  // namespace

void CourseTable::Analysed(const Course& course) {
  if (course.Figures().solves > 1) return;
  EndRunOnError(path_.string(), [&] { stream_ = OpenStream(path_); });
  WriteLine(
      std::string("step,target,volume,cells_changed,max_stress,mean_stress,min_stress,iterations,"
                  "true_residual,converged,connected,compliance") +
      CaseTitles(course) + "\n");
  WriteLine(Line(course));
}

void CourseTable::Stepped(const Course& course) { WriteLine(Line(course)); }

void CourseTable::WriteLine(const std::string& line) {
  if (!faults_.empty()) return;
  CollectError(faults_, path_.string(), [&] { WriteNow(stream_.get(), line); });
}

void CourseTable::Finish(std::vector<Failure>& faults) {
  const bool closed = !stream_ || stream_.get_deleter()(stream_.release()) == 0;
  if (!closed && faults_.empty()) {
    faults_.push_back({kExitUsageOrFile,
                       path_.string() + ": it could not be written completely: " + SystemReason()});
  }
  faults.insert(faults.end(), faults_.begin(), faults_.end());
}

}  // namespace quillane
