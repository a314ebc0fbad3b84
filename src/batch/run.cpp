#include "batch/run.h"

#include <fmt/format.h>

#include <cmath>
#include <functional>
#include <string>

#include "batch/course_recorder.h"
#include "batch/failure.h"
#include "batch/final_files.h"
#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/run_summary.h"
#include "export/outline_file.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "model/number_text.h"
#include "optimize/optimization_step.h"

namespace quillane {
namespace {

/// A wished volume is looked for with these, unless the command line says otherwise.
constexpr Integer kSearchEpsilon = 5;
constexpr Single kSearchLambda = 0.1F;

int PlannedSteps(const BatchOptions& options) {
  if (options.volumeFraction || (options.untilSteady && !options.steps)) return -1;
  return options.steps.value_or(0);
}

class BatchRun {
 public:
  BatchRun(const BatchOptions& options, const volatile std::sig_atomic_t& signal)
      : options_(options), signal_(signal), recorder_(options, summary_, PlannedSteps(options)) {}

  int Run() {
    TryOutputs(options_);
    Open();
    try {
      Analyse();
      if (options_.volumeFraction) {
        StepsToVolume();
      } else {
        Steps();
      }
    } catch (const Failure& failure) {
      GiveUp(failure);
      return summary_.exitStatus;
    }
    Finish();
    return summary_.exitStatus;
  }

 private:
  void Open() {
    Named(options_.model.string(), [&] {
      model_ = ModelFromText(InputText(options_.model));
      model_.ModelFilePath = options_.model.string();
    });
    TryOutline();
    if (options_.volumeFraction) {
      model_.Epsilon = kSearchEpsilon;
      model_.Lambda = kSearchLambda;
    }
    if (options_.stressTarget) model_.StressTarget = *options_.stressTarget;
    if (options_.epsilon) model_.Epsilon = *options_.epsilon;
    if (options_.lambda) model_.Lambda = *options_.lambda;
    const bool paced = model_.Lambda > 0 && model_.Lambda <= 1;
    if ((options_.untilSteady || options_.volumeFraction) && !paced) {
      throw Failure{kExitUsageOrFile,
                    fmt::format("--lambda: {} wants a Lambda above 0 and up to 1, not {}",
                                options_.untilSteady ? "--until-steady" : "--volume-fraction",
                                GeneralText(model_.Lambda))};
    }
  }

  /// What has no outline now will have none after an hour of steps.
  void TryOutline() {
    if (options_.outline.empty()) return;
    Named(options_.outline.string(),
          [&] { MakeOutlineFile(*OutlineFormatOf(options_.outline), model_, false); });
  }

  void Analyse() {
    SolveReport report;
    Named("stress analysis", [&] {
      MarkActiveNodes(model_);
      report = StressAnalysis(model_);
      if (!options_.history.empty()) history_.Start(model_, options_.history);
    });
    recorder_.Analysed(model_, report);
  }

  void Step() {
    SolveReport report;
    const int step = summary_.steps + 1;
    Named(fmt::format("optimization step {} (numbered {} in the history)", step, model_.StepCount),
          [&] { report = Optimization(model_, history_); });
    recorder_.Stepped(model_, report);
  }

  bool GoesOn() const { return signal_ == 0; }

  void Steps() {
    const int most = options_.steps.value_or(options_.untilSteady ? kIntegerMax : 0);
    while (summary_.steps < most && GoesOn() && !(options_.untilSteady && IsSteady())) Step();
    if (!options_.untilSteady || !GoesOn()) return;
    if (summary_.steadyFrom < 0) {
      Note(fmt::format("not at rest after {} steps", summary_.steps));
      wishReached_ = false;
    } else if (summary_.cycle == 1) {
      Note(fmt::format("at rest from step {} on", summary_.steadyFrom));
    } else {
      Note(fmt::format("from step {} on {} layouts take turns", summary_.steadyFrom,
                       summary_.cycle));
    }
  }

  /// Whether the last 7 / Lambda steps repeated one layout, or a few in turn.
  bool IsSteady() {
    const auto long_enough = static_cast<int>(std::ceil(7 / double{model_.Lambda} - 1e-4));
    for (int cycle = 1; cycle <= OptimizationCourse::kLongestCycle; ++cycle) {
      const int repeated = recorder_.Course().RepeatedSteps(cycle);
      if (repeated < long_enough) continue;
      summary_.cycle = cycle;
      summary_.steadyFrom = summary_.steps - repeated;
      return true;
    }
    return false;
  }

  /// Each stage is found on a copy, and then done with everything recorded.
  void StepsToVolume() {
    VolumeSearch search(model_, *options_.volumeFraction);
    const auto goOn = [this](const Model& tried) {
      recorder_.Progress().Show(tried, tried.StepCount,
                                fmt::format("stage {}  target {} MPa  ", summary_.stages.size() + 1,
                                            GeneralText(tried.StressTarget)));
      return GoesOn();
    };
    std::optional<Stage> stage;
    do {
      Named(fmt::format("stage {}", summary_.stages.size() + 1),
            [&] { stage = search.Next(model_, goOn); });
      if (stage) Do(*stage, search);
    } while (stage && GoesOn());
    wishReached_ = search.Reached();
    if (GoesOn()) Note(SearchNote(search, *options_.volumeFraction, summary_.stages.size()));
  }

  void Do(const Stage& stage, const VolumeSearch& search) {
    if (recorder_.RecordsSteps()) {
      model_.StressTarget = stage.stressTarget;
      recorder_.AnalysedAgain(model_, StressAnalysis(model_));
      for (int step = 0; step < stage.steps && GoesOn(); ++step) Step();
    } else {
      model_ = search.Result();
      recorder_.Took(stage.steps, search.LastSolve());
    }
    summary_.stages.push_back({stage, model_.Volume});
  }

  void Note(const std::string& note) { summary_.notes.push_back(note); }

  /// Tells what ended the run. The files of the end are not written; history, course and frames are
  /// complete up to here.
  void GiveUp(const Failure& failure) {
    recorder_.Finish();
    summary_.error = failure.message;
    summary_.exitStatus = failure.exitStatus;
    Complain(failure.message);
    WriteJson();
  }

  void Finish() {
    std::vector<std::string> faults = WriteFinalFiles(options_, model_, summary_);
    Tried(faults, options_.history.string(), [&] { history_.Close(model_); });
    for (const std::string& fault : recorder_.Finish()) faults.push_back(fault);
    for (const std::string& fault : faults) Complain(fault);
    Judge(!faults.empty());
    WriteJson();
    PrintSummary();
  }

  void Judge(bool fileFailed) {
    if (summary_.unconvergedSolves > 0) {
      Note(fmt::format("the solver did not converge in {} of {} solves, first {}",
                       summary_.unconvergedSolves, summary_.solves,
                       summary_.firstUnconverged == 0
                           ? "in the stress analysis"
                           : fmt::format("at step {}", summary_.firstUnconverged)));
    }
    summary_.connected = LostLoads(model_).empty();
    if (!summary_.connected) Note("a load has no way to supports that hold it");
    if (signal_ != 0) Note(fmt::format("interrupted after step {}", summary_.steps));
    if (!summary_.lastSolve.converged) {
      Complain(
          "the last solve did not converge: its displacements and stresses mean nothing; the "
          "plate is not held, or has come apart");
    }
    summary_.exitStatus = fileFailed                      ? kExitUsageOrFile
                          : signal_ != 0                  ? kExitSignal + signal_
                          : !summary_.lastSolve.converged ? kExitNotConverged
                          : !wishReached_                 ? kExitWishNotReached
                                                          : kExitDone;
  }

  void WriteJson() {
    if (options_.json.empty()) return;
    Late(options_.json.string(), [&] {
      WriteOutput(options_.json, SummaryJson(options_.model.string(), model_, summary_));
    });
  }

  void PrintSummary() {
    if (options_.quiet) return;
    const bool taken = WritesToStandardOutput(options_);
    Late(taken ? "standard error" : "standard output",
         [&] { WriteNow(taken ? stderr : stdout, SummaryText(model_, summary_)); });
  }

  /// Writes something after everything else was judged.
  void Late(const std::string& name, const std::function<void()>& write) {
    try {
      Named(name, write);
    } catch (const Failure& failure) {
      Complain(failure.message);
      summary_.exitStatus = failure.exitStatus;
    }
  }

  static void Complain(const std::string& message) {
    std::fputs(("quillane-batch: " + message + "\n").c_str(), stderr);
  }

  const BatchOptions& options_;
  const volatile std::sig_atomic_t& signal_;
  Model model_;
  History history_;
  RunSummary summary_;
  CourseRecorder recorder_;
  bool wishReached_ = true;
};

/// --check: a line a finding.
int RunCheck(const BatchOptions& options) {
  std::vector<Finding> findings;
  Named(options.model.string(), [&] { findings = CheckModelText(InputText(options.model)); });
  std::string text;
  for (const auto& [line, reason] : findings) {
    text += fmt::format("{}: {}{}\n", options.model.string(),
                        line > 0 ? fmt::format("line {}: ", line) : "", reason);
  }
  if (findings.empty() && !options.quiet) text = options.model.string() + ": nothing looks wrong\n";
  Named("standard output", [&] { WriteNow(stdout, text); });
  return findings.empty() ? kExitDone : kExitFindings;
}

}  // namespace

int RunBatch(const BatchOptions& options, const volatile std::sig_atomic_t& signal) {
  try {
    return options.check ? RunCheck(options) : BatchRun(options, signal).Run();
  } catch (const Failure& failure) {
    std::fputs(("quillane-batch: " + failure.message + "\n").c_str(), stderr);
    return failure.exitStatus;
  }
}

}  // namespace quillane
