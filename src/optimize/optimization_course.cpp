#include "optimize/optimization_course.h"

#include <algorithm>
#include <span>

namespace quillane {
namespace {

/// Of two layouts; the cells of a grid that grew or shrank are not counted.
int CellsThatDiffer(std::span<const Integer> one, std::span<const Integer> other) {
  int differing = 0;
  for (std::size_t cell = 0; cell < std::min(one.size(), other.size()); ++cell) {
    if (one[cell] != other[cell]) ++differing;
  }
  return differing;
}

}  // namespace

void OptimizationCourse::Begin(const Model& model, const SolveReport& report) {
  *this = OptimizationCourse();
  layouts_ = {model.CellState};
  startVolume_ = model.Volume;
  unconvergedSolves_ = report.converged ? 0 : 1;
}

void OptimizationCourse::Add(const Model& model, const SolveReport& report) {
  const std::span<const Integer> present = model.CellState.Raw();
  cellsChanged_ = layouts_.empty() ? 0 : CellsThatDiffer(layouts_.front().Raw(), present);
  for (std::size_t back = 0; back < layouts_.size(); ++back) {
    const bool same = std::ranges::equal(layouts_[back].Raw(), present);
    repeated_[back] = same ? repeated_[back] + 1 : 0;
  }
  layouts_.push_front(model.CellState);
  if (layouts_.size() > kLongestCycle) layouts_.pop_back();
  unconvergedSolves_ = report.converged ? 0 : unconvergedSolves_ + 1;
}

int OptimizationCourse::RepeatedSteps(int cycle) const {
  return repeated_[static_cast<std::size_t>(cycle) - 1];
}

}  // namespace quillane
