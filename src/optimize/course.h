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

/// Is told what happens in a course. An exception that a listener throws is handled as a failure of
/// the analysis or step it was told of.
class CourseListener {
 public:
  virtual ~CourseListener() = default;

  /// A stress analysis stands; a new series of steps begins with it.
  virtual void Analysed(const Course& course) = 0;

  /// A step stands, with its stresses and volume. StepCount is still the number of this step.
  virtual void Stepped(const Course& course) = 0;
};

/// What a course has done so far.
struct CourseFigures {
  int steps = 0;              ///< optimization steps, of all series
  int solves = 0;             ///< analyses and steps
  int unconvergedSolves = 0;  ///< of these
  int firstUnconverged = 0;   ///< the first one's step, 0 for the analysis
  int unconvergedInARow = 0;  ///< up to the last solve, in this series
  int cellsChanged = 0;       ///< cells whose state the last step changed
  double startVolume = 0;     ///< of the layout that the last analysis took, mm^3
  SolveReport lastSolve;
};

/// The figures of a course that went on as another one.
CourseFigures Joined(const CourseFigures& first, CourseFigures then);

/// Layouts that repeat.
struct Repetition {
  int cycle = 0;  ///< steps after which a layout returns: 1 for a layout at rest
  int steps = 0;  ///< how many steps in a row, up to the last, gave the layout `cycle` steps before
};

/// Analyses and optimizes a model step by step, follows how the steps go, and tells listeners.
/// Whatever runs steps runs them through this class: the window, the command line, the search.
class Course {
 public:
  /// The longest cycle of layouts that is looked for, in steps.
  static constexpr int kLongestCycle = 8;

  /// The listeners are told in this order. Model, listeners and load cases must outlive the course.
  explicit Course(Model& model, std::initializer_list<CourseListener*> listeners = {});
  Course(const Course&) = delete;
  Course& operator=(const Course&) = delete;

  /// Takes the load cases beside the model's own into every analysis and step from now on.
  void SetLoadCases(LoadCases& cases) { cases_ = &cases; }

  void AddListener(CourseListener& listener) { listeners_.push_back(&listener); }

  /// Runs the stress analysis, which begins a new series of steps. Throws RunTimeError, the model
  /// left as the failed procedure left it; or what a listener throws.
  void Analyse();

  /// Runs one optimization step. Where it fails, layout and potentials are put back as they stood
  /// before, and the exception goes on.
  void Step();

  /// Begins a series with layout, potentials and StepCount as they stand, as an earlier course left
  /// them; counts the steps on from StepCount. Throws as Analyse.
  void Resume();

  /// Takes over what another course did to copies of this model and its cases; no listener is told.
  void Adopt(const Model& model, const LoadCases& cases, const CourseFigures& figures);

  /// Analyses the present layout for its results alone, as after a failed step: potentials, figures
  /// and StepCount stay. Throws RunTimeError.
  void AnalyseAgain();

  const Model& State() const { return model_; }
  const LoadCases& Cases() const { return *cases_; }
  const CourseFigures& Figures() const { return figures_; }

  /// Whether every load, of every case, is connected to adequate supports.
  bool Connected() const { return cases_->Connected(model_); }

  /// The work of the loads (N mm), of all cases together.
  double Compliance() const { return cases_->Compliance(model_); }

  /// The shortest cycle that has repeated for at least `least` steps, and for its own length.
  std::optional<Repetition> Repeats(int least = 1) const;

  /// Repeats for RestSteps of the model's Lambda: what is called rest everywhere.
  std::optional<Repetition> Rest() const { return Repeats(RestSteps(model_.Lambda)); }

  /// 7 / lambda steps, at most the largest int: by then a potential has forgotten where it began.
  /// lambda: above 0.
  static int RestSteps(Single lambda);

 private:
  void Forget();
  void Begin(const SolveReport& report);
  void Add(const SolveReport& report);
  void Count(const SolveReport& report);

  Model& model_;
  LoadCases noOthers_;
  LoadCases* cases_ = &noOthers_;
  std::vector<CourseListener*> listeners_;
  CourseFigures figures_;
  std::deque<Array2<Integer>> layouts_;           ///< the last ones, the present one first
  std::array<int, kLongestCycle> repeated_ = {};  ///< [cycle - 1], steps
};

}  // namespace quillane
