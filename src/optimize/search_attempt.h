// One way from a plate to a wished volume: votes of the rule at targets chosen from the stresses.
#pragma once

#include <functional>
#include <vector>

#include "model/model.h"
#include "optimize/course.h"

namespace quillane {

/// A stress analysis, which sets the potentials anew, and then `steps` optimization steps.
struct Stage {
  Single stressTarget = 0;  ///< MPa
  Integer epsilon = 0;
  Single lambda = 0;
  int steps = 0;
};

/// Gives the model the target, Epsilon and Lambda of a stage.
void Prescribe(const Stage& stage, Model& model);

struct KeptStage {
  Stage stage;
  double volume = 0;      ///< after it, mm^3
  double compliance = 0;  ///< after it, N mm
};

/// Why an attempt ended.
enum class SearchEnd {
  kReached,       ///< the wished volume
  kLoadsLost,     ///< the last stage tried would disconnect a load from its supports
  kWorthLess,     ///< it would cost more stiffness than the material is worth
  kNotConverged,  ///< the solver does not converge for its layout
  kTooLight,      ///< its layout is lighter than the wish
  kNothingLeft,   ///< it takes no material
  kTriedEnough,   ///< kMostVotes votes were tried
  kStopped,       ///< by the caller
};

/// Which stages are tried first, and how much of the plate they may take.
struct SearchWay {
  Single lambda = 1;
  Integer epsilon = 5;        ///< of the first stage tried
  int votes = 1;              ///< in a row, each at a target of its own, before the plate is judged
  double pace = 0.02;         ///< share of the plate that is taken at once
  bool narrowed = false;      ///< no other Epsilon than this one
  double largestLoss = 1.25;  ///< accepted for the last cell that can be taken at once
  bool thorough = false;      ///< tries every repair before it takes one
  bool erodes = false;        ///< where no repair helps, takes cells by steps that add none
};

struct Attempt;

struct SearchGoal {
  double share = 0;       ///< of the full volume
  double fullVolume = 0;  ///< mm^3
  /// Called before every step, by the thread of the attempt; false stops it.
  std::function<bool()> goOn;
  /// Called with every layout that is kept; empty where nobody listens.
  std::function<void(const Attempt& soFar)> kept;
};

/// What an attempt found: the stiffest layout at the wish, else the lightest sound one.
struct Attempt {
  SearchWay way;
  std::vector<KeptStage> stages;
  int steps = 0;          ///< tried, with those taken back
  double worstLoss = 1;   ///< largest rise of compliance times volume in what was kept at once
  double volume = 0;      ///< mm^3
  double compliance = 0;  ///< N mm
  double meanStress = 0, maxStress = 0;  ///< MPa
  bool reached = false;                  ///< the wish
  SearchEnd end = SearchEnd::kReached;
  Model model;            ///< as its last stage leaves it
  LoadCases cases;        ///< likewise
  CourseFigures figures;  ///< of its stages alone
};

/// Volumes this far from the wish, as a share of the full volume, still meet it.
inline constexpr double kVolumeTolerance = 0.02;

/// The Epsilons that a way votes with which is not narrowed to one.
inline const std::vector<Integer> kSearchEpsilons = {1, 3, 5, 7};

/// Votes that an attempt tries at most.
inline constexpr int kMostVotes = 400;

/// Takes material from a model, analysed with its load cases, until the wished volume is left.
///
/// A vote is a stage of VoteSteps steps. Its target is chosen from the present stresses such that
/// it takes the way's pace of the plate. After one or more votes the plate is judged: it must carry
/// all loads that it carried at the start, converge, and its compliance times volume must not rise
/// by more than 4 %. Otherwise other votes are tried from the same layout, then a third of the
/// pace. Where not even a single cell can be taken, largestLoss is accepted, at last after a series
/// of votes at constant volume, which thickens what a broken member has overloaded; or some cells
/// are taken by a single step with a Lambda of 0.45, by which hardly any come. At the wish
/// some votes at constant volume follow; the stiffest layout of them is kept. Throws RunTimeError
/// other than where a step fails for a broken plate.
Attempt TryWay(const Model& analysed, const SearchWay& way, const SearchGoal& goal,
               const LoadCases& cases = {});

}  // namespace quillane
