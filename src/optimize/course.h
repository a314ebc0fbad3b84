// An optimization as a whole: an analysis, the steps after it, and how they go.
#pragma once

#include <array>
#include <deque>
#include <initializer_list>
#include <optional>
#include <vector>

#include "model/model.h"
#include "optimize/load_cases.h"

namespace quillane {

class Course;

/// Is notified of what happens in a course. An exception thrown by a listener counts as a failure
/// of that analysis or step.
class CourseListener {
 public:
  virtual ~CourseListener() = default;

  /// A stress analysis has succeeded; a new series of steps begins with it.
  virtual void Analysed(const Course& course) = 0;

  /// A step has succeeded, with its stresses and volume. StepCount is still the number of this
  /// step.
  virtual void Stepped(const Course& course) = 0;
};

/// What a course has done so far. A series is an analysis and the steps after it.
struct CourseFigures {
  int steps = 0;              ///< optimization steps in all series
  int solves = 0;             ///< analyses and steps in all series
  int unconvergedSolves = 0;  ///< solves that did not converge
  int firstUnconverged = 0;   ///< step of the first such solve; 0: an analysis before any step
  int unconvergedInARow = 0;  ///< such solves at the end of the present series
  int cellsChanged = 0;       ///< cells whose state the last step changed
  double startVolume = 0;     ///< volume at the last analysis, mm^3
  SolveReport lastSolve;      ///< of the last analysis or step
};

/// Returns the figures of the course `first` continued by the course `then`.
CourseFigures Joined(const CourseFigures& first, CourseFigures then);

/// Layouts that repeat.
struct Repetition {
  int cycle = 0;  ///< steps after which a layout returns: 1 for a layout at rest
  int steps = 0;  ///< how many steps in a row, up to the last, gave the layout `cycle` steps before
};

/// Analyses and optimizes a model step by step, keeps figures of the steps, and notifies listeners.
/// The window, the command line and the search all run their steps through this class.
class Course {
 public:
  /// The longest cycle of layouts that is looked for, in steps.
  static constexpr int kLongestCycle = 8;

  /// Listeners are notified in this order. Model, listeners and load cases must outlive the course.
  explicit Course(Model& model, std::initializer_list<CourseListener*> listeners = {});
  Course(const Course&) = delete;
  Course& operator=(const Course&) = delete;

  /// Includes these load cases, beside the model's own, in all later analyses and steps.
  void SetLoadCases(LoadCases& cases) { cases_ = &cases; }

  void AddListener(CourseListener& listener) { listeners_.push_back(&listener); }

  /// Runs the stress analysis, which begins a new series of steps. Throws RunTimeError, the model
  /// left as the failed procedure left it; or what a listener throws.
  void Analyse();

  /// Runs one optimization step. If it fails, restores layout, potentials, figures and what Repeats
  /// compares, and rethrows.
  void Step();

  /// Begins a series from the present layout, potentials and StepCount, which an earlier course
  /// left; counts the steps from StepCount. Throws as Analyse.
  void Resume();

  /// Adopts the result of another course on copies of this model and its cases; notifies no
  /// listener.
  void Adopt(const Model& model, const LoadCases& cases, const CourseFigures& figures);

  /// Recomputes the results of the present layout, as after a failed step; potentials, figures and
  /// StepCount stay. Throws RunTimeError.
  void AnalyseAgain();

  const Model& State() const { return model_; }
  const LoadCases& Cases() const { return *cases_; }
  const CourseFigures& Figures() const { return figures_; }

  /// Returns whether every load of every case is connected to adequate supports.
  bool Connected() const { return cases_->Connected(model_); }

  /// Returns the work of the loads of all cases together, N mm.
  double Compliance() const { return cases_->Compliance(model_); }

  /// Returns the shortest cycle that has repeated for at least `least` steps and its own length.
  std::optional<Repetition> Repeats(int least = 1) const;

  /// Returns Repeats for RestSteps of the model's Lambda, the one definition of rest.
  std::optional<Repetition> Rest() const { return Repeats(RestSteps(model_.Lambda)); }

  /// Returns 7 / lambda, at most the largest int: after so many steps a potential has forgotten its
  /// start. lambda: above 0.
  static int RestSteps(Single lambda);

 private:
  using Layouts = std::deque<Array2<Integer>>;
  using Repeated = std::array<int, kLongestCycle>;

  void Forget();
  void Begin(const SolveReport& report);
  void Add(const SolveReport& report);
  void Count(const SolveReport& report);

  Model& model_;
  LoadCases noOthers_;
  LoadCases* cases_ = &noOthers_;
  std::vector<CourseListener*> listeners_;
  CourseFigures figures_;
  Layouts layouts_;         ///< the last ones, the present one first
  Repeated repeated_ = {};  ///< [cycle - 1], steps
};

}  // namespace quillane
