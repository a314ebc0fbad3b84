#include "optimize/volume_search.h"

#include <cmath>

#include "fem/load_paths.h"
#include "model/numbers.h"
#include "model/run_time_error.h"
#include "optimize/optimization_step.h"

namespace quillane {
namespace {

constexpr double kFirstTarget = 0.25;   ///< of the mean stress at the start
constexpr double kLowestTarget = 1e-3;  ///< likewise; a plate that breaks there is given up
constexpr double kFirstGrowth = 0.1;
constexpr double kSmallestGrowth = 1e-3;
constexpr double kLargestLoss = 0.2;  ///< of the volume, in one step

/// To four significant digits, so that a person can type it.
Single Typeable(double target) {
  const double unit = std::pow(10.0, std::floor(std::log10(target)) - 3);
  return ToSingle(std::round(target / unit) * unit, "the stress target");
}

}  // namespace

VolumeSearch::VolumeSearch(const Model& model, double share)
    : wish_(share * model.Volume),
      tolerance_(kTolerance * model.Volume),
      lastVolume_(model.Volume),
      lastTarget_(kFirstTarget * model.AvgStress / (1 + kFirstGrowth)),
      lowestTarget_(kLowestTarget * model.AvgStress),
      growth_(kFirstGrowth) {
  if (!LostLoads(model).empty()) End(StageOutcome::kLoadsLost);
}

int VolumeSearch::StepsOfAStage(Single lambda) {
  return ToInteger(std::ceil(7.5 / double{lambda} - 1e-4), "the number of steps of a stage");
}

std::optional<Stage> VolumeSearch::Next(const Model& model, const GoOn& goOn) {
  while (!ended_) {
    const Stage whole{Typeable(lastTarget_ * (1 + growth_)), StepsOfAStage(model.Lambda)};
    const Stage stage = gaveUp_ ? *cutShort_ : whole;
    tried_ = model;
    tried_.HistoryRecording = 0;
    outcome_ = Try(stage, goOn);
    if (outcome_ == StageOutcome::kGood) {
      Keep(stage);
      return stage;
    }
    gaveUp_ = !TakeBack();
    if (outcome_ == StageOutcome::kStopped || (gaveUp_ && !cutShort_)) End(outcome_);
  }
  return std::nullopt;
}

void VolumeSearch::Keep(const Stage& stage) {
  anyKept_ = true;
  cutShort_.reset();
  lastTarget_ = double{stage.stressTarget};
  lastVolume_ = tried_.Volume;
  const bool close = lastVolume_ <= wish_ + tolerance_ / 2;
  if (close || tried_.MaxStress <= lastTarget_) End(StageOutcome::kGood);
}

/// Makes the next stage gentler; false where that has been tried enough.
bool VolumeSearch::TakeBack() {
  if (!anyKept_) {
    lastTarget_ /= 2;
    return lastTarget_ >= lowestTarget_;
  }
  growth_ /= 2;
  return growth_ >= kSmallestGrowth;
}

void VolumeSearch::End(StageOutcome outcome) {
  ended_ = true;
  reached_ = lastVolume_ <= wish_ + tolerance_;
  outcome_ = outcome;
}

StageOutcome VolumeSearch::Try(const Stage& stage, const GoOn& goOn) {
  tried_.StressTarget = stage.stressTarget;
  if (!StressAnalysis(tried_).converged) return StageOutcome::kNotConverged;
  for (int step = 0; step < stage.steps; ++step) {
    const StageOutcome outcome = TryStep();
    if (outcome != StageOutcome::kGood) return outcome;
    if (!goOn(tried_)) return StageOutcome::kStopped;
    const bool close = std::fabs(tried_.Volume - wish_) <= tolerance_;
    if (close && !cutShort_) cutShort_ = Stage{stage.stressTarget, step + 1};
  }
  return tried_.Volume < wish_ - tolerance_ ? StageOutcome::kTooLight : StageOutcome::kGood;
}

StageOutcome VolumeSearch::TryStep() {
  const double before = tried_.Volume;
  try {
    solve_ = Optimization(tried_);
  } catch (const RunTimeError& error) {
    // So fails a plate from which the last way of a load, or the last cell, has gone.
    if (error.Kind() != ErrorKind::kFloatingPoint) throw;
    return StageOutcome::kLoadsLost;
  }
  if (!LostLoads(tried_).empty()) return StageOutcome::kLoadsLost;
  if (!solve_.converged) return StageOutcome::kNotConverged;
  return tried_.Volume < (1 - kLargestLoss) * before ? StageOutcome::kTooMuchAtOnce
                                                     : StageOutcome::kGood;
}

}  // namespace quillane
