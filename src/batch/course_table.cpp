#include "batch/course_table.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>

#include "fem/load_paths.h"
#include "fem/stress.h"
#include "model/number_text.h"

namespace quillane {
namespace {

std::string Line(const Course& course) {
  const Model& model = course.State();
  const CourseFigures& figures = course.Figures();
  const SolveReport& solve = figures.lastSolve;
  return fmt::format("{},{},{:.17g},{},{:.17g},{:.17g},{:.17g},{},{:.3g},{:d},{:d},{:.17g}\n",
                     figures.steps, GeneralText(model.StressTarget), model.Volume,
                     figures.cellsChanged, model.MaxStress, model.AvgStress, model.MinStress,
                     solve.iterations, solve.trueResidual, solve.converged,
                     LostLoads(model).empty(), Compliance(model));
}

}  // namespace

void CourseTable::Analysed(const Course& course) {
  if (begun_) return;
  begun_ = true;
  EndRunOnError(path_.string(), [&] { stream_ = OpenStream(path_); });
  WriteLine(
      "step,target,volume,cells_changed,max_stress,mean_stress,min_stress,iterations,"
      "true_residual,converged,connected,compliance\n");
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
    faults_.push_back({kExitUsageOrFile, path_.string() + ": it could not be written completely: " +
                                             std::generic_category().message(errno)});
  }
  faults.insert(faults.end(), faults_.begin(), faults_.end());
}

}  // namespace quillane
