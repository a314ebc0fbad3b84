#include "optimize/volume_search.h"

#include <algorithm>
#include <array>
#include <mutex>

#include "optimize/side_by_side.h"

namespace quillane {
namespace {

/// A shape without a worse stage than this is taken as good: compliance times volume.
constexpr double kGoodLoss = 1.1;
constexpr double kFairLoss = 1.25;  ///< after the second round

/// No further round begins once the attempts have taken so many steps, times the cells of the grid.
constexpr double kMostCellSteps = 1e6;

constexpr std::size_t kRound = 2;  ///< attempts

/// The ways, in the order in which they are tried.
constexpr std::array<SearchWay, kMostAttempts> kWays = {
    {{.votes = 1, .pace = 0.015},
     {.votes = 2, .pace = 0.03},
     {.votes = 2, .pace = 0.02, .thorough = true, .erodes = true},
     {.votes = 1, .pace = 0.04, .thorough = true},
     {.votes = 2, .pace = 0.012, .largestLoss = 1.5, .thorough = true, .erodes = true},
     {.votes = 1, .pace = 0.03, .largestLoss = 1.5, .thorough = true, .erodes = true}}};

std::vector<SearchWay> Ways(const SearchOptions& options) {
  std::vector<SearchWay> ways(kWays.begin(), kWays.end());
  for (SearchWay& way : ways) {
    way.lambda = options.lambda.value_or(way.lambda);
    way.epsilon = options.epsilon.value_or(way.epsilon);
    way.narrowed = options.epsilon.has_value();
    way.erodes = way.erodes && !options.lambda && !options.epsilon;
  }
  return ways;
}

bool IsBetter(const Attempt& one, const Attempt& other) {
  if (one.reached != other.reached) return one.reached;
  return one.reached ? one.compliance * one.volume < other.compliance * other.volume
                     : one.volume < other.volume;
}

class Rounds {
 public:
  Rounds(const Model& analysed, const SearchOptions& options, const SearchWatch& watch,
         const LoadCases& cases)
      : analysed_(analysed), cases_(cases), options_(options), watch_(watch) {}

  SearchResult Run() {
    const std::vector<SearchWay> ways = Ways(options_);
    for (std::size_t first = 0; first < ways.size() && GoesOn(); first += kRound) {
      const std::size_t count = std::min(kRound, ways.size() - first);
      std::vector<Attempt> found(count);
      RunSideBySide(count, options_.jobs, [&](std::size_t at) {
        try {
          found[at] = TryWay(analysed_, ways[first + at], Goal(first + at, at == 0), cases_);
        } catch (...) {
          const std::scoped_lock lock(mutex_);
          stopped_ = true;  // for the attempt beside it
          throw;
        }
      });
      for (Attempt& attempt : found) Take(std::move(attempt));
    }
    return std::move(result_);
  }

 private:
  SearchGoal Goal(std::size_t index, bool leads) {
    SearchGoal goal;
    goal.share = options_.share;
    goal.fullVolume = options_.fullVolume;
    goal.goOn = [this] {
      const std::scoped_lock lock(mutex_);
      stopped_ = stopped_ || !watch_.goOn();
      return !stopped_;
    };
    if (leads && watch_.kept) {
      goal.kept = [this, index](const Attempt& soFar) {
        const std::scoped_lock lock(mutex_);
        watch_.kept(soFar, index);
      };
    }
    return goal;
  }

  bool GoesOn() const {
    if (stopped_) return false;
    if (result_.attempts.empty()) return true;
    const Attempt& best = result_.Best();
    const double good = result_.attempts.size() > kRound ? kFairLoss : kGoodLoss;
    return !best.reached || (best.worstLoss > good && cellSteps_ <= kMostCellSteps);
  }

  void Take(Attempt&& attempt) {
    cellSteps_ += 1.0 * attempt.steps * analysed_.ElementCount;
    result_.attempts.push_back(std::move(attempt));
    const std::size_t last = result_.attempts.size() - 1;
    if (last == 0) return;
    const bool better = IsBetter(result_.attempts[last], result_.attempts[result_.best]);
    Attempt& worse = result_.attempts[better ? result_.best : last];
    worse.model = {};
    worse.cases = {};
    if (better) result_.best = last;
  }

  const Model& analysed_;
  const LoadCases& cases_;
  const SearchOptions& options_;
  const SearchWatch& watch_;
  SearchResult result_;
  std::mutex mutex_;
  bool stopped_ = false;
  double cellSteps_ = 0;
};

}  // namespace

int KeepLoadedCells(Model& model, const LoadCases& cases) {
  const auto isLoaded = [&](int node) {
    return IsLoaded(model, node) || std::ranges::any_of(cases.Others(), [node](const Model& other) {
             return IsLoaded(other, node);
           });
  };
  int kept = 0;
  ForEachPresentCell(model, [&](int row, int column, int element) {
    Integer& state = model.CellState(row, column);
    if (state != kCellDesign) return;
    for (int k = 1; k <= 4; ++k) {
      const int node = model.ElementNodes(element, k);
      if (!isLoaded(node)) continue;
      state = kCellNonDesign;
      ++kept;
      return;
    }
  });
  return kept;
}

double VolumeOfCells(const Model& model, std::ptrdiff_t cells) {
  const double edge = double{model.ElementSize};
  return edge * edge * model.Thickness * static_cast<double>(cells);  // in DesignVolume's order
}

double FullVolume(const Model& model) {
  const auto cells = std::ranges::count_if(model.CellState.Raw(),
                                           [](Integer state) { return state >= kCellEmpty; });
  return VolumeOfCells(model, cells);
}

SearchResult SearchVolume(const Model& analysed, const SearchOptions& options,
                          const SearchWatch& watch, const LoadCases& cases) {
  return Rounds(analysed, options, watch, cases).Run();
}

}  // namespace quillane
