#include "optimize/course.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <tuple>

#include "fem/mesh.h"
#include "optimize/optimization_step.h"

namespace quillane {
namespace {

/// Compares the cells that both layouts have: the grid may have changed by hand.
int CellsThatDiffer(std::span<const Integer> one, std::span<const Integer> other) {
  int differing = 0;
  for (std::size_t cell = 0; cell < std::min(one.size(), other.size()); ++cell) {
    if (one[cell] != other[cell]) ++differing;
  }
  return differing;
}

}  // namespace

CourseFigures Joined(const CourseFigures& first, CourseFigures then) {
  if (then.solves == 0) return first;
  then.firstUnconverged =
      first.unconvergedSolves > 0 ? first.firstUnconverged : first.steps + then.firstUnconverged;
  then.steps += first.steps;
  then.solves += first.solves;
  then.unconvergedSolves += first.unconvergedSolves;
  return then;
}

Course::Course(Model& model, std::initializer_list<CourseListener*> listeners)
    : model_(model), listeners_(listeners) {}

void Course::Analyse() {
  Forget();
  Begin(StressAnalysis(model_, cases_->AsAnalysis()));
  for (CourseListener* listener : listeners_) listener->Analysed(*this);
}

void Course::Resume() {
  Forget();
  model_.EditMode = kModeNothing;
  MarkActiveNodes(model_);
  figures_.steps = model_.StepCount;
  Begin(cases_->Analyse(model_));
  for (CourseListener* listener : listeners_) listener->Analysed(*this);
}

void Course::Adopt(const Model& model, const LoadCases& cases, const CourseFigures& figures) {
  model_ = model;
  *cases_ = cases;
  layouts_.clear();
  repeated_ = {};
  figures_ = Joined(figures_, figures);
}

void Course::Step() {
  const auto state = [this] {
    return std::tie(model_.CellState, model_.Potential, figures_, layouts_, repeated_);
  };
  const std::tuple<Array2<Integer>, Array2<Double>, CourseFigures, Layouts, Repeated> before =
      state();
  try {
    const auto stands = [this](const SolveReport& report) {
      Add(report);
      for (CourseListener* listener : listeners_) listener->Stepped(*this);
    };
    Optimization(model_, stands, cases_->AsAnalysis());
  } catch (...) {
    state() = before;
    throw;
  }
}

void Course::AnalyseAgain() {
  MarkActiveNodes(model_);
  cases_->Analyse(model_);
}

void Course::Forget() {
  layouts_.clear();
  repeated_ = {};
  figures_.startVolume = 0;
  figures_.cellsChanged = 0;
  figures_.unconvergedInARow = 0;
}

void Course::Begin(const SolveReport& report) {
  layouts_ = {model_.CellState};
  figures_.startVolume = model_.Volume;
  Count(report);
}

void Course::Add(const SolveReport& report) {
  const std::span<const Integer> present = model_.CellState.Raw();
  figures_.cellsChanged = layouts_.empty() ? 0 : CellsThatDiffer(layouts_.front().Raw(), present);
  for (std::size_t back = 0; back < layouts_.size(); ++back) {
    const bool same = std::ranges::equal(layouts_[back].Raw(), present);
    repeated_[back] = same ? repeated_[back] + 1 : 0;
  }
  layouts_.push_front(model_.CellState);
  if (layouts_.size() > kLongestCycle) layouts_.pop_back();
  ++figures_.steps;
  Count(report);
}

void Course::Count(const SolveReport& report) {
  figures_.lastSolve = report;
  ++figures_.solves;
  figures_.unconvergedInARow = report.converged ? 0 : figures_.unconvergedInARow + 1;
  if (!report.converged && figures_.unconvergedSolves++ == 0) {
    figures_.firstUnconverged = figures_.steps;
  }
}

std::optional<Repetition> Course::Repeats(int least) const {
  for (int cycle = 1; cycle <= kLongestCycle; ++cycle) {
    const int steps = repeated_[static_cast<std::size_t>(cycle) - 1];
    if (steps >= std::max(least, cycle)) return Repetition{cycle, steps};
  }
  return std::nullopt;
}

int Course::RestSteps(Single lambda) {
  const double steps = std::ceil(7 / double{lambda} - 1e-4);
  return steps < std::numeric_limits<int>::max() ? static_cast<int>(steps)
                                                 : std::numeric_limits<int>::max();
}

}  // namespace quillane
