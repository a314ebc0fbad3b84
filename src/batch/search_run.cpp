#include "batch/search_run.h"

#include <fmt/format.h>

#include <chrono>
#include <iterator>

#include "batch/console.h"
#include "batch/failure.h"
#include "batch/outputs.h"
#include "batch/tables.h"
#include "model/model_file.h"
#include "model/number_text.h"
#include "optimize/vote.h"

namespace quillane {
namespace {

using Clock = std::chrono::steady_clock;

/// Writes files from which a killed run can be continued.
class Checkpoints {
 public:
  explicit Checkpoints(const OutputPaths& outputs) : outputs_(outputs) {}

  void Kept(const Attempt& attempt) {
    const Clock::time_point now = Clock::now();
    if (now - written_ < std::chrono::seconds(1)) return;
    written_ = now;
    Write(Output::kSave, [&] { return ModelFileText(attempt.model); });
    Write(Output::kCells, [&] { return CellTable(attempt.model, attempt.cases.Results()); });
  }

 private:
  template <class Content>
  void Write(Output output, const Content& content) const {
    const std::filesystem::path& path = outputs_[output];
    if (path.empty() || !IsFile(path)) return;
    EndRunOnError(path.string(), [&] { WriteOutput(path, content()); });
  }

  const OutputPaths& outputs_;
  Clock::time_point written_ = Clock::now();
};

}  // namespace

void CheckSearch(const BatchOptions& options, const Model& model) {
  const auto refuse = [](const std::string& reason) { throw Failure{kExitUsageOrFile, reason}; };
  const auto positive = [&](const char* name, double value) {
    if (value > 0) return;
    refuse(fmt::format("--volume-fraction: the model's {} is not above 0", name));
  };
  positive("thickness", model.Thickness);
  positive("Young's modulus", model.YoungModulus);
  positive("size of the cells", double{model.ElementSize});
  if (options.epsilon && (*options.epsilon < 1 || *options.epsilon > 10)) {
    refuse(fmt::format("--epsilon: --volume-fraction expects an Epsilon from 1 to 10, not {}",
                       *options.epsilon));
  }
  if (!options.lambda) return;
  if (*options.lambda <= 0 || *options.lambda > 1) {
    refuse(fmt::format("--lambda: --volume-fraction expects a Lambda above 0 and up to 1, not {}",
                       GeneralText(*options.lambda)));
  }
  for (const Integer epsilon : options.epsilon ? std::vector{*options.epsilon} : kSearchEpsilons) {
    if (VoteSteps(*options.lambda, epsilon) <= kIntegerMax) continue;
    refuse(fmt::format("--lambda: {} is too small: a stage would take more than {} steps",
                       GeneralText(*options.lambda), kIntegerMax));
  }
}

SearchResult RunSearch(const BatchOptions& options, const Model& analysed, const LoadCases& cases,
                       double fullVolume, ProgressLine& progress) {
  SearchOptions search;
  search.share = *options.volumeFraction;
  search.fullVolume = fullVolume;
  search.lambda = options.lambda;
  search.epsilon = options.epsilon;
  search.jobs = options.jobs;
  Checkpoints checkpoints(options.outputs);
  SearchWatch watch;
  watch.goOn = [] { return NotedSignal() == 0; };
  watch.kept = [&](const Attempt& soFar, std::size_t index) {
    progress.Show(soFar.model, static_cast<int>(soFar.stages.size()),
                  fmt::format("attempt {}  target {} MPa  stage by ", index + 1,
                              GeneralText(soFar.model.StressTarget)));
    checkpoints.Kept(soFar);
  };
  return SearchVolume(analysed, search, watch, cases);
}

const char* WhyEnded(SearchEnd end) {
  switch (end) {
    case SearchEnd::kReached:
      return "reached";
    case SearchEnd::kLoadsLost:
      return "every further stage disconnects a load from adequate supports";
    case SearchEnd::kWorthLess:
      return "every further stage costs more stiffness than the material is worth";
    case SearchEnd::kNotConverged:
      return "the solver does not converge for any further stage";
    case SearchEnd::kTooLight:
      return "every further stage falls below the wish";
    case SearchEnd::kNothingLeft:
      return "no further stage takes material";
    case SearchEnd::kTriedEnough:
      return "the limit of stages was tried";
    case SearchEnd::kStopped:
      return "interrupted";
  }
  return "";
}

std::string SearchNote(const SearchResult& result, double share, double fullVolume) {
  const Attempt& best = result.Best();
  if (best.reached) {
    return fmt::format("volume fraction {} reached in {} stages, the best of {} {}",
                       GeneralText(share), best.stages.size(), result.attempts.size(),
                       result.attempts.size() == 1 ? "attempt" : "attempts");
  }
  return fmt::format("volume fraction {} not reached, {:.4f} is the lightest of {} attempts: {}",
                     GeneralText(share), best.volume / fullVolume, result.attempts.size(),
                     WhyEnded(best.end));
}

std::string AttemptTable(const SearchResult& result, double fullVolume) {
  std::string text =
      "\nattempt  Lambda  Epsilon  pace (%)  stages  steps tried  fraction  compliance  mean (MPa) "
      " "
      "max (MPa)  end\n";
  int number = 0;
  for (const Attempt& attempt : result.attempts) {
    fmt::format_to(
        std::back_inserter(text),
        "{:>7}{} {:>6}  {:>7}  {:>8.1f}  {:>6}  {:>11}  {:>8.4f}  {:>10.5g}  {:>10.4g}  "
        "{:>9.4g}  {}\n",
        ++number, &attempt == &result.Best() ? "*" : " ", GeneralText(attempt.way.lambda),
        attempt.way.narrowed ? fmt::to_string(attempt.way.epsilon) : "any", 100 * attempt.way.pace,
        attempt.stages.size(), attempt.steps, attempt.volume / fullVolume, attempt.compliance,
        attempt.meanStress, attempt.maxStress, WhyEnded(attempt.end));
  }
  return text;
}

}  // namespace quillane
