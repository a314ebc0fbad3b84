#include "batch/run.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <string>

#include "batch/course_table.h"
#include "batch/failure.h"
#include "batch/frames.h"
#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/progress_line.h"
#include "batch/resume.h"
#include "batch/run_summary.h"
#include "batch/search_run.h"
#include "export/outline_file.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "model/number_text.h"
#include "optimize/course.h"
#include "optimize/history.h"

namespace quillane {
namespace {

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
        SearchForVolume();
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
      ModelInput input = ModelFromText(InputText(options_.model));
      Doubt(CheckModel(input.model, input.notes));
      model_ = std::move(input.model);
      model_.ModelFilePath = options_.model.string();
    });
    TryOutline();
    if (options_.stressTarget) model_.StressTarget = *options_.stressTarget;
    if (options_.epsilon) model_.Epsilon = *options_.epsilon;
    if (options_.lambda) model_.Lambda = *options_.lambda;
    if (!options_.resume.empty()) {
      Named(options_.resume.string(), [&] { ResumeFrom(model_, InputText(options_.resume)); });
    }
    if (options_.volumeFraction) PrepareSearch();
    if (options_.untilSteady) CheckPace();
  }

  void PrepareSearch() {
    CheckSearch(options_, model_);
    if (!options_.lambda) model_.Lambda = 1;  // that of the model would be without effect
    if (!options_.keepLoads) return;
    const int kept = KeepLoadedCells(model_);
    if (kept > 0) Note(fmt::format("{} design cells at loads were made non-design cells", kept));
  }

  void CheckPace() const {
    const bool paced = model_.Lambda > 0 && model_.Lambda <= 1;
    if (paced && Course::RestSteps(model_.Lambda) <= kIntegerMax) return;
    throw Failure{kExitUsageOrFile,
                  fmt::format("--lambda: --until-steady wants a Lambda above 0 and up to 1 with at "
                              "most {} steps of rest, not {}",
                              kIntegerMax, GeneralText(model_.Lambda))};
  }

  /// Reports what looks wrong in the model, which ends a strict run.
  void Doubt(const ModelFindings& findings) {
    if (findings.count == 0) return;
    const std::string text = options_.model.string() + ": " + FindingsText(findings);
    if (options_.strict) throw Failure{kExitFindings, text};
    Complain(text);
  }

  /// Fails at once for a model that has no outline at all, and not after the whole run.
  void TryOutline() {
    const std::filesystem::path& outline = options_.outputs[Output::kOutline];
    if (outline.empty()) return;
    Named(outline.string(),
          [&] { OutlineText(options_.outlineFormat, TraceShape(model_), model_.Thickness); });
  }

  void Analyse() {
    const bool resumes = !options_.resume.empty();
    Named("stress analysis", [&] {
      MarkActiveNodes(model_);
      if (resumes) {
        course_.Resume();
      } else {
        course_.Analyse();
      }
      const std::filesystem::path& history = options_.outputs[Output::kHistory];
      if (history.empty()) return;
      if (resumes) {
        history_.Resume(model_, history);
      } else {
        history_.Start(model_, history);
      }
    });
    summary_.startVolume = resumes ? FullVolume(model_) : model_.Volume;
  }

  void Step() {
    Named(fmt::format("optimization step {} (numbered {} in the history)",
                      course_.Figures().steps + 1, model_.StepCount),
          [&] { course_.Step(); });
  }

  bool GoesOn() const { return signal_ == 0; }

  void Steps() {
    const int most =
        course_.Figures().steps + options_.steps.value_or(options_.untilSteady ? kIntegerMax : 0);
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

  /// Searches on copies. The way that wins is done once more where something is recorded of every
  /// step; the result is the same. After a signal the best layout so far is taken, unrecorded.
  void SearchForVolume() {
    wishReached_ = false;
    if (!course_.Figures().lastSolve.converged) {
      Note("no search: the analysis of the whole plate did not converge");
      return;
    }
    if (NonDesignVolume() > (*options_.volumeFraction + kVolumeTolerance) * summary_.startVolume) {
      Note(fmt::format("volume fraction {} not reached: the non-design cells alone take {:.4f}",
                       GeneralText(*options_.volumeFraction),
                       NonDesignVolume() / summary_.startVolume));
      return;
    }
    Named("search", [&] {
      summary_.search =
          RunSearch(options_, model_, summary_.startVolume, progress_, [this] { return GoesOn(); });
    });
    const Attempt& best = summary_.search->Best();
    wishReached_ = best.reached;
    if (best.reached && best.worstLoss > 1.25) {
      Note(fmt::format("at one stage compliance times volume rose by {:.0f} %: look at the shape",
                       100 * (best.worstLoss - 1)));
    }
    if (GoesOn()) {
      Note(SearchNote(*summary_.search, *options_.volumeFraction, summary_.startVolume));
    }
    summary_.stages = best.stages;
    if (RecordsSteps(options_.outputs) && GoesOn()) {
      for (const KeptStage& kept : best.stages) Do(kept.stage);
    } else {
      course_.Adopt(best.model, best.figures);
    }
  }

  double NonDesignVolume() const {
    return VolumeOfCells(model_, std::ranges::count(model_.CellState.Raw(), kCellNonDesign));
  }

  /// A signal does not end this: the same steps were done before, and there are few.
  void Do(const Stage& stage) {
    model_.StressTarget = stage.stressTarget;
    model_.Epsilon = stage.epsilon;
    model_.Lambda = stage.lambda;
    Named("stress analysis", [&] { course_.Analyse(); });
    for (int step = 0; step < stage.steps; ++step) Step();
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
    if (options_.dropLoose) DropLoose();
    std::vector<std::string> faults;
    WriteFinalFiles(faults);
    CloseAll(faults);
    for (const std::string& fault : faults) Complain(fault);
    Judge(!faults.empty());
    WriteJson();
    PrintSummary();
  }

  void DropLoose() {
    const int dropped = DropLoosePieces(model_);
    if (dropped == 0) return;
    Named("the plate without its loose pieces", [&] { course_.AnalyseAgain(); });
    Note(fmt::format("{} loose {} left out", dropped, dropped == 1 ? "piece was" : "pieces were"));
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
    summary_.pieces = static_cast<int>(FindPieces(model_).pieces.size());
    if (summary_.pieces > 1) Note(fmt::format("the plate has {} separate pieces", summary_.pieces));
    if (!summary_.connected) Note("a load is not connected to adequate supports");
    if (signal_ != 0) Note(fmt::format("interrupted after step {}", figures.steps));
    if (figures.solves > 0 && !figures.lastSolve.converged) {
      Complain(fmt::format(
          "the last solve did not converge: its displacements and stresses mean nothing; "
          "the plate {}",
          summary_.connected ? "is held, but too slender for the solver, or Poisson's "
                               "ratio is not between -1 and 0.5"
                             : "is not held, or has come apart"));
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
      findings = CheckModel(model, notes).shown;
    } catch (const ModelFileError& error) {
      findings = {{0, error.what()}};
    }
  });
  std::string text;
  for (const Finding& finding : findings) {
    text += fmt::format("{}: {}\n", options.model.string(), FindingText(finding));
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
