#include "batch/run.h"

#include <fmt/format.h>

#include <cmath>
#include <functional>
#include <string>

#include "batch/course_table.h"
#include "batch/failure.h"
#include "batch/frames.h"
#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/progress_line.h"
#include "batch/run_summary.h"
#include "export/outline_file.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "model/number_text.h"
#include "optimize/course.h"
#include "optimize/history.h"

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
      : options_(options),
        signal_(signal),
        progress_(stderr, !options.quiet, PlannedSteps(options)),
        table_(options.outputs[Output::kCourse]),
        frames_(options),
        course_(model_, {&history_, &progress_}) {
    if (options.outputs.Wants(Output::kCourse)) course_.AddListener(table_);
    if (options.outputs.Wants(Output::kFrames)) course_.AddListener(frames_);
  }

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
      model_ = ModelFromText(InputText(options_.model)).model;
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

  /// Fails at once for a model that has no outline at all, and not after the whole run.
  void TryOutline() {
    const std::filesystem::path& outline = options_.outputs[Output::kOutline];
    if (outline.empty()) return;
    Named(outline.string(), [&] { MakeOutlineFile(*OutlineFormatOf(outline), model_, false); });
  }

  void Analyse() {
    Named("stress analysis", [&] {
      MarkActiveNodes(model_);
      course_.Analyse();
      if (options_.outputs.Wants(Output::kHistory)) {
        history_.Start(model_, options_.outputs[Output::kHistory]);
      }
    });
    summary_.startVolume = model_.Volume;
  }

  void Step() {
    Named(fmt::format("optimization step {} (numbered {} in the history)",
                      course_.Figures().steps + 1, model_.StepCount),
          [&] { course_.Step(); });
  }

  bool GoesOn() const { return signal_ == 0; }

  void Steps() {
    const int most = options_.steps.value_or(options_.untilSteady ? kIntegerMax : 0);
    const auto rests = [this] { return options_.untilSteady && course_.Rest(); };
    while (course_.Figures().steps < most && GoesOn() && !rests()) Step();
    if (!options_.untilSteady || !GoesOn()) return;
    const int steps = course_.Figures().steps;
    summary_.rest = course_.Rest();
    wishReached_ = summary_.rest.has_value();
    if (!wishReached_) {
      Note(fmt::format("not at rest after {} steps", steps));
    } else if (const auto [cycle, repeated] = *summary_.rest; cycle == 1) {
      Note(fmt::format("at rest from step {} on", steps - repeated));
    } else {
      Note(fmt::format("from step {} on the layout repeats every {} steps", steps - repeated,
                       cycle));
    }
  }

  /// Each stage is found on a copy, and then done with everything recorded.
  void StepsToVolume() {
    VolumeSearch search(model_, *options_.volumeFraction);
    const auto goOn = [this](const Model& tried) {
      progress_.Show(tried, tried.StepCount,
                     fmt::format("stage {}  target {} MPa  ", summary_.stages.size() + 1,
                                 GeneralText(tried.StressTarget)));
      return GoesOn();
    };
    std::optional<Stage> stage;
    do {
      Named(fmt::format("stage {}", summary_.stages.size() + 1),
            [&] { stage = search.Next(model_, goOn); });
      if (stage) Do(*stage);
    } while (stage && GoesOn());
    wishReached_ = search.Reached();
    if (GoesOn()) Note(SearchNote(search, *options_.volumeFraction, summary_.stages.size()));
  }

  void Do(const Stage& stage) {
    model_.StressTarget = stage.stressTarget;
    Named("stress analysis", [&] { course_.Analyse(); });
    for (int step = 0; step < stage.steps && GoesOn(); ++step) Step();
    summary_.stages.push_back({stage, model_.Volume});
  }

  void Note(const std::string& note) { summary_.notes.push_back(note); }

  /// Tells what ended the run early. After a failed step the files of the end are written from the
  /// layout that stood before it.
  void GiveUp(const Failure& failure) {
    std::vector<std::string> faults;
    std::string ending;
    if (course_.Figures().solves > 0) {
      try {
        Named("the last layout", [&] { course_.AnalyseAgain(); });
        ending = fmt::format("; the files hold the layout after step {}", course_.Figures().steps);
      } catch (const Failure&) {
      }
    }
    summary_.error = failure.message + ending;
    Complain(summary_.error);
    if (!ending.empty()) WriteFinalFiles(faults);
    CloseAll(faults);
    for (const std::string& fault : faults) Complain(fault);
    Judge(!faults.empty());
    summary_.exitStatus = failure.exitStatus;
    WriteJson();
  }

  void Finish() {
    std::vector<std::string> faults;
    WriteFinalFiles(faults);
    CloseAll(faults);
    for (const std::string& fault : faults) Complain(fault);
    Judge(!faults.empty());
    WriteJson();
    PrintSummary();
  }

  /// Writes every wanted file of the final model; one that fails does not keep the others from
  /// being written.
  void WriteFinalFiles(std::vector<std::string>& faults) {
    summary_.figures = course_.Figures();
    for (const OutputRow& row : OutputTable()) {
      const std::filesystem::path& path = options_.outputs[row.output];
      if (path.empty() || row.content == nullptr) continue;
      Tried(faults, path.string(),
            [&] { WriteOutput(path, row.content(options_, model_, summary_)); });
    }
  }

  /// Completes what was written during the run.
  void CloseAll(std::vector<std::string>& faults) {
    progress_.Clear();
    Tried(faults, options_.outputs[Output::kHistory].string(), [&] { history_.Close(model_); });
    table_.Finish(faults);
    frames_.Finish(faults);
  }

  void Judge(bool fileFailed) {
    const CourseFigures& figures = summary_.figures = course_.Figures();
    if (figures.unconvergedSolves > 0) {
      Note(fmt::format("the solver did not converge in {} of {} solves, first {}",
                       figures.unconvergedSolves, figures.solves,
                       figures.firstUnconverged == 0
                           ? "in the stress analysis"
                           : fmt::format("at step {}", figures.firstUnconverged)));
    }
    summary_.connected = LostLoads(model_).empty();
    if (!summary_.connected) Note("a load is not connected to adequate supports");
    if (signal_ != 0) Note(fmt::format("interrupted after step {}", figures.steps));
    if (!figures.lastSolve.converged) {
      Complain(
          "the last solve did not converge: its displacements and stresses mean nothing; the "
          "plate is not held, or has come apart");
    }
    summary_.exitStatus = fileFailed                     ? kExitUsageOrFile
                          : signal_ != 0                 ? kExitSignal + signal_
                          : !figures.lastSolve.converged ? kExitNotConverged
                          : !wishReached_                ? kExitWishNotReached
                                                         : kExitDone;
  }

  void WriteJson() {
    const std::filesystem::path& json = options_.outputs[Output::kJson];
    if (json.empty()) return;
    Late(json.string(),
         [&] { WriteOutput(json, SummaryJson(options_.model.string(), model_, summary_)); });
  }

  void PrintSummary() {
    if (options_.quiet) return;
    const bool taken = WritesToStandardOutput(options_.outputs);
    Late(taken ? "standard error" : "standard output",
         [&] { WriteNow(taken ? stderr : stdout, SummaryText(model_, summary_)); });
  }

  /// Writes something after everything else was judged.
  void Late(const std::string& name, const std::function<void()>& write) {
    std::vector<std::string> faults;
    Tried(faults, name, write);
    for (const std::string& fault : faults) {
      Complain(fault);
      summary_.exitStatus = kExitUsageOrFile;
    }
  }

  static void Complain(const std::string& message) {
    std::fputs(("quillane-batch: " + message + "\n").c_str(), stderr);
  }

  const BatchOptions& options_;
  const volatile std::sig_atomic_t& signal_;
  Model model_;
  RunSummary summary_;
  History history_;
  ProgressLine progress_;
  CourseTable table_;
  Frames frames_;
  Course course_;
  bool wishReached_ = true;
};

/// --check: a line a finding.
int RunCheck(const BatchOptions& options) {
  std::vector<Finding> findings;
  Named(options.model.string(), [&] {
    const std::string text = InputText(options.model);
    try {
      const auto [model, notes] = ModelFromText(text);
      findings = CheckModel(model, notes);
    } catch (const ModelFileError& error) {
      findings = {{0, error.what()}};
    }
  });
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
