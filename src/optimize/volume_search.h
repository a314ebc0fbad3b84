// From a full domain to a wished volume: a stress target that is raised in stages.
#pragma once

#include <functional>
#include <optional>

#include "fem/solver.h"
#include "model/model.h"

namespace quillane {

/// A stress analysis, which sets the potentials anew, and then `steps` optimization steps.
struct Stage {
  Single stressTarget = 0;  ///< MPa
  int steps = 0;
};

/// What became of a stage that was tried.
enum class StageOutcome {
  kGood,           ///< it is kept
  kLoadsLost,      ///< a load has no way to supports that hold it any more
  kNotConverged,   ///< the solver did not converge
  kTooMuchAtOnce,  ///< one step took more than a fifth of the volume
  kTooLight,       ///< the volume fell below the wish
  kStopped,        ///< the caller did not let it go on
};

/// Looks for stages that bring a plate down to a share of its volume without breaking it. One
/// target for the whole course would dissolve a full domain; what a low target leaves is worked
/// harder and bears a higher one. So the target begins at a quarter of the mean stress and grows by
/// a tenth each stage; a stage that breaks the plate is dropped and tried again with half the
/// growth. Where even the gentlest stage goes past the wish or breaks on its way, one is cut short
/// as it passes the wish. Every step is that of Optimization, so the stages found give the same
/// course anywhere.
class VolumeSearch {
 public:
  /// Volumes this far from the wish, as a share of the volume at the start, still meet it. A search
  /// that comes from above goes on to half of it as long as it can.
  static constexpr double kTolerance = 0.02;

  /// model: analysed. share: of its volume, above 0 and below 1.
  VolumeSearch(const Model& model, double share);

  /// Called with the model after each step tried; false stops the search.
  using GoOn = std::function<bool(const Model& tried)>;

  /// Finds the next stage for the model, which is as the stage before (or the analysis) left it.
  /// Nothing where the search has ended. Throws RunTimeError, other than where a step of a stage
  /// fails for a broken plate.
  std::optional<Stage> Next(const Model& model, const GoOn& goOn);

  /// The model as the stage that Next found leaves it.
  const Model& Result() const { return tried_; }

  /// The solve of its last step.
  const SolveReport& LastSolve() const { return solve_; }

  bool Reached() const { return reached_; }

  /// What became of the last stage tried; of a search that ended without reaching its wish, why.
  /// kGood then says that no stress is above the target: nothing is left to take.
  StageOutcome LastOutcome() const { return outcome_; }

  /// Steps of a stage, 7.5 / Lambda: by then a layout rests as a rule.
  static int StepsOfAStage(Single lambda);

 private:
  StageOutcome Try(const Stage& stage, const GoOn& goOn);
  StageOutcome TryStep();
  void Keep(const Stage& stage);
  bool TakeBack();
  void End(StageOutcome outcome);

  double wish_;                    ///< mm^3
  double tolerance_;               ///< mm^3
  double lastVolume_;              ///< of the last stage kept, mm^3
  double lastTarget_;              ///< of the last stage kept, MPa
  double lowestTarget_;            ///< MPa
  double growth_;                  ///< of the target, to the next stage
  std::optional<Stage> cutShort_;  ///< how the next stage would pass the wish
  bool gaveUp_ = false;            ///< on whole stages
  bool anyKept_ = false;
  bool reached_ = false;
  bool ended_ = false;
  StageOutcome outcome_ = StageOutcome::kGood;
  Model tried_;
  SolveReport solve_;
};

}  // namespace quillane
