#include "optimize/search_attempt.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <span>

#include "optimize/potential.h"
#include "optimize/search_moves.h"
#include "optimize/vote.h"

namespace quillane {
namespace {

constexpr double kFreeLoss = 1.003;  ///< nothing else is tried for less
constexpr double kUsualLoss = 1.04;  ///< of compliance times volume, accepted at any pace

int PresentCells(const Model& model) {
  int count = 0;
  ForEachPresentCell(model, [&count](int, int, int) { ++count; });
  return count;
}

/// The states of the cells after the next step; the model stays as it is.
Array2<Integer> NextLayout(Model& model) {
  Array2<Integer> layout = model.CellState;
  const Array2<Double> potential = model.Potential;
  UpdatePotential(model);
  std::swap(layout, model.CellState);
  model.Potential = potential;
  return layout;
}

bool IsLayoutOf(const Model& model, const Array2<Integer>& layout) {
  return std::ranges::equal(layout.Raw(), model.CellState.Raw());
}

/// The moves that vote with the Epsilons a way may have.
std::vector<Move> AllowedBy(const SearchWay& way, std::span<const Move> moves) {
  std::vector<Move> allowed;
  std::ranges::copy_if(moves, std::back_inserter(allowed), [&way](const Move& move) {
    return std::ranges::all_of(
        move, [&way](const Vote& vote) { return !way.narrowed || vote.epsilon == way.epsilon; });
  });
  return allowed;
}

class Search {
 public:
  Search(const Model& analysed, const SearchWay& way, const SearchGoal& goal,
         const LoadCases& cases)
      : goal_(goal), lostBefore_(cases.LostLoads(analysed)) {
    attempt_.way = way;
    attempt_.compliance = cases.Compliance(analysed);
    attempt_.cases = cases;
    attempt_.model = analysed;
    attempt_.model.HistoryRecording = 0;
    cells_ = PresentCells(analysed);
    cellVolume_ = analysed.Volume / cells_;
    aim_ = static_cast<int>(std::lround(goal.share * goal.fullVolume / cellVolume_));
    lightest_ = static_cast<int>(
        std::ceil((goal.share - kVolumeTolerance) * goal.fullVolume / cellVolume_ + 1e-6));
    heaviest_ = static_cast<int>(
        std::floor((goal.share + kVolumeTolerance) * goal.fullVolume / cellVolume_ - 1e-6));
    attempt_.end = cells_ < lightest_ ? SearchEnd::kTooLight : SearchEnd::kNothingLeft;
    moves_ = AllowedBy(way, kMoves);
    repairs_ = AllowedBy(way, kRepairs);
    if (moves_.empty()) moves_ = {{{way.epsilon}, {way.epsilon}}};
  }

  Attempt Run() {
    double pace = attempt_.way.pace;
    while (cells_ > aim_ && !ended_) {
      const int taken = std::max(1, static_cast<int>(pace * cells_));
      if (Advance(taken)) {
        pace = std::min(attempt_.way.pace, 1.7 * pace);
      } else if (taken > 1) {
        pace /= 3;
      } else if (cells_ <= heaviest_ || !(Repair() || Erode())) {
        break;
      } else {
        pace = attempt_.way.pace;
      }
    }
    const bool lighter = cells_ * cellVolume_ < goal_.fullVolume - 0.5 * cellVolume_;
    attempt_.reached = cells_ <= heaviest_ && cells_ >= lightest_ && lighter;
    if (attempt_.reached) {
      attempt_.end = SearchEnd::kReached;
      Polish();
    }
    attempt_.volume = attempt_.model.Volume;
    attempt_.meanStress = attempt_.model.AvgStress;
    attempt_.maxStress = attempt_.model.MaxStress;
    return std::move(attempt_);
  }

 private:
  /// A layout that was tried from the present one.
  struct Trial {
    Model model;
    LoadCases cases;
    std::vector<KeptStage> stages = {};
    CourseFigures figures = {};
    int cells = 0;
    double compliance = 0;
    double loss = std::numeric_limits<double>::infinity();
  };

  double LossOf(const Trial& trial) const {
    return trial.compliance * trial.cells / (attempt_.compliance * cells_);
  }

  /// Tries moves until one costs nothing; keeps the best layout that is good enough.
  bool Advance(int taken) {
    const int aim = std::max(aim_, cells_ - taken);
    const std::size_t most = taken > 1 ? 2 : moves_.size();
    Trial best;
    for (std::size_t move = 0; move < std::min(most, moves_.size()); ++move) {
      const int judgedFrom = move == 0 ? attempt_.way.votes : 1;
      TryMove(moves_[move], judgedFrom, aim, best);
      if (ended_ || best.loss <= kFreeLoss) break;
    }
    return !ended_ && best.loss <= (taken > 1 ? kUsualLoss : attempt_.way.largestLoss) &&
           Keep(best);
  }

  bool Repair() {
    const double good = attempt_.way.thorough ? 1 : kUsualLoss;
    return KeepBest(repairs_, kRepairPaces, good, attempt_.way.largestLoss);
  }

  bool Erode() {
    return attempt_.way.erodes && KeepBest(kErosions, kErosionPaces, kUsualLoss, kUsualLoss);
  }

  /// Tries all moves at one pace after the other, until one is good; keeps the best, if any loses
  /// at most `most`.
  bool KeepBest(std::span<const Move> moves, std::span<const double> paces, double good,
                double most) {
    Trial best;
    for (const double pace : paces) {
      const int aim = std::max(aim_, cells_ - std::max(1, static_cast<int>(pace * cells_)));
      for (const Move& move : moves) {
        if (!ended_) TryMove(move, static_cast<int>(move.size()), aim, best);
      }
      if (best.loss <= good) break;
    }
    return !ended_ && best.loss <= most && Keep(best);
  }

  /// Casts the votes of a move, judges the layouts from the judgedFrom-th on, until one costs
  /// nothing.
  void TryMove(const Move& move, int judgedFrom, int aim, Trial& best) {
    Trial trial{.model = attempt_.model, .cases = attempt_.cases};
    Course course(trial.model);
    course.SetLoadCases(trial.cases);
    int cast = 0;
    for (const Vote& vote : move) {
      if (!Cast(vote, static_cast<int>(aim * (1 + vote.room)), course, trial)) return;
      if (++cast < judgedFrom || vote.room > 0 || !IsSound(trial)) continue;
      trial.loss = LossOf(trial);
      if (trial.loss > kUsualLoss) attempt_.end = SearchEnd::kWorthLess;
      if (trial.loss < best.loss) best = trial;
      if (best.loss <= kFreeLoss) return;
    }
  }

  /// Whether a layout is lighter than the present one, not too light, and solved.
  bool IsSound(const Trial& trial) {
    const bool takes = !trial.stages.empty() && trial.cells < cells_;
    const bool converged = trial.figures.lastSolve.converged;
    if (takes && converged && trial.cells >= lightest_) return true;
    attempt_.end = !takes       ? SearchEnd::kNothingLeft
                   : !converged ? SearchEnd::kNotConverged
                                : SearchEnd::kTooLight;
    return false;
  }

  /// Lets all cells vote, at a target that leaves `aim` of them, and adds the stage to the trial; a
  /// vote by which nothing changes adds none. Returns false where the attempt ends, or where the
  /// next layout would cut a load off: the trial is then of no use.
  bool Cast(const Vote& vote, int aim, Course& course, Trial& trial) {
    Model& model = trial.model;
    if (++votes_ > kMostVotes) return End(SearchEnd::kTriedEnough);
    const Stage last{model.StressTarget, model.Epsilon, model.Lambda};
    const Stage stage = StageOf(vote, aim, model);
    Prescribe(stage, model);
    if (stage.lambda == 1 && IsLayoutOf(model, NextLayout(model))) {
      Prescribe(last, model);
      return true;
    }
    course.Analyse();
    for (int step = 0; step < stage.steps; ++step) {
      if (!TakeStep(course, model)) return false;
    }
    trial.figures = course.Figures();
    trial.compliance = course.Compliance();
    trial.cells = PresentCells(model);
    trial.stages.push_back({stage, model.Volume, trial.compliance});
    return true;
  }

  Stage StageOf(const Vote& vote, int aim, const Model& model) const {
    if (vote.oneStep > 0) {
      const Single target = TargetThatKeeps(model, vote.oneStep, vote.epsilon, aim);
      return {target, vote.epsilon, vote.oneStep, 1};
    }
    const Single lambda = attempt_.way.lambda;
    return {TargetThatKeeps(model, 1, vote.epsilon, aim), vote.epsilon, lambda,
            VoteSteps(lambda, vote.epsilon)};
  }

  bool TakeStep(Course& course, Model& model) {
    ++attempt_.steps;
    if (!goal_.goOn()) return End(SearchEnd::kStopped);
    if (!NextLayoutCarriesLoads(model)) {
      attempt_.end = SearchEnd::kLoadsLost;
      return false;
    }
    course.Step();
    return true;
  }

  /// Whether the plate after the next step carries what it carried at the start. Told without the
  /// analysis, which costs most where the plate has come apart.
  bool NextLayoutCarriesLoads(Model& model) const {
    Array2<Integer> layout = NextLayout(model);
    if (IsLayoutOf(model, layout)) return true;
    std::swap(layout, model.CellState);
    const bool carries = attempt_.cases.LostLoads(model) == lostBefore_;
    std::swap(layout, model.CellState);
    return carries;
  }

  bool End(SearchEnd end) {
    ended_ = true;
    attempt_.end = end;
    return false;
  }

  bool Keep(Trial& trial) {
    attempt_.worstLoss = std::max(attempt_.worstLoss, trial.loss);
    attempt_.compliance = trial.compliance;
    attempt_.model = std::move(trial.model);
    attempt_.cases = std::move(trial.cases);
    attempt_.stages.insert(attempt_.stages.end(), trial.stages.begin(), trial.stages.end());
    attempt_.figures = Joined(attempt_.figures, trial.figures);
    cells_ = trial.cells;
    if (goal_.kept) goal_.kept(attempt_);
    return true;
  }

  /// Votes at the wished volume; what is stiffer is kept, with all that led to it.
  void Polish() {
    Trial path{.model = attempt_.model, .cases = attempt_.cases};
    const SearchEnd end = attempt_.end;
    for (const Integer epsilon : kPolish) {
      if (ended_) break;
      if (attempt_.way.narrowed && epsilon != attempt_.way.epsilon) continue;
      Trial next{.model = path.model, .cases = path.cases};
      Course course(next.model);
      course.SetLoadCases(next.cases);
      if (!Cast({epsilon}, aim_, course, next) || next.stages.empty()) continue;
      if (!next.figures.lastSolve.converged || next.cells < lightest_ || next.cells > heaviest_ ||
          LossOf(next) > 1.1) {
        continue;
      }
      path.model = std::move(next.model);
      path.cases = std::move(next.cases);
      path.stages.push_back(next.stages.front());
      path.figures = Joined(path.figures, next.figures);
      path.cells = next.cells;
      path.compliance = next.compliance;
      if (LossOf(path) < 1) {
        Trial kept = path;
        kept.loss = 1;
        Keep(kept);
        path.stages.clear();
        path.figures = {};
      }
    }
    if (attempt_.end != SearchEnd::kStopped) attempt_.end = end;
  }

  const SearchGoal& goal_;
  std::vector<std::vector<int>> lostBefore_;
  Attempt attempt_;
  std::vector<Move> moves_, repairs_;
  int cells_ = 0;                  ///< present in the layout kept last
  int aim_, lightest_, heaviest_;  ///< cells at the wish
  double cellVolume_ = 0;          ///< mm^3
  int votes_ = 0;
  bool ended_ = false;
};

}  // namespace

void Prescribe(const Stage& stage, Model& model) {
  model.StressTarget = stage.stressTarget;
  model.Epsilon = stage.epsilon;
  model.Lambda = stage.lambda;
}

Attempt TryWay(const Model& analysed, const SearchWay& way, const SearchGoal& goal,
               const LoadCases& cases) {
  return Search(analysed, way, goal, cases).Run();
}

}  // namespace quillane
