#include "batch/run.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "batch/check_run.h"
#include "batch/course_table.h"
#include "batch/failure.h"
#include "batch/frames.h"
#include "batch/messages.h"
#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/progress_line.h"
#include "batch/resume.h"
#include "batch/run_summary.h"
#include "batch/search_run.h"
#include "export/outline_file.h"
#include "fem/element_stiffness.h"
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

void TellRemarks(const BatchOptions& options) {
  if (options.quiet) return;
  for (const std::string& remark : options.remarks) Complain(remark);
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
    summary_.remarks = options_.remarks;
    TryOutputs(options_, fresh_);
    Open();
    ApplyOptions();
    TryOutline();
    TryPicture();
    try {
      Analyse();
      if (options_.volumeFraction) {
        SearchForVolume();
      } else {
        Steps();
      }
      if (options_.dropLoose) DropLoose();
    } catch (const Failure& failure) {
      GiveUp(failure);
      return summary_.exitStatus;
    }
    Finish();
    return summary_.exitStatus;
  }

 private:
  void Open() {
    model_ = InputModel(options_.model);
    OpenLoadCases();
  }

  void ApplyOptions() {
    if (options_.stressTarget) model_.StressTarget = *options_.stressTarget;
    if (options_.epsilon) model_.Epsilon = *options_.epsilon;
    if (options_.lambda) model_.Lambda = *options_.lambda;
    if (!options_.resume.empty()) {
      EndRunOnError(options_.resume.string(),
                    [&] { ResumeFrom(model_, InputText(options_.resume)); });
    }
    if (options_.volumeFraction) PrepareSearch();
    if (options_.untilSteady) CheckPace();
  }

  void PrepareSearch() {
    CheckSearch(options_, model_);
    if (!options_.lambda) model_.Lambda = 1;  // that of the model would be without effect
    if (!options_.keepLoads) return;
    int kept = 0;
    EndRunOnError("search", [&] { kept = KeepLoadedCells(model_, cases_); });
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
  void Doubt(const std::filesystem::path& path, const ModelFindings& findings) {
    if (findings.count == 0) return;
    const std::string text = path.string() + ": " + FindingsText(findings);
    if (options_.strict) throw Failure{kExitFindings, text};
    Complain(text);
  }

  Model InputModel(const std::filesystem::path& path) {
    Model model;
    EndRunOnError(path.string(), [&] {
      ModelInput input = ModelFromText(InputText(path));
      Doubt(path, CheckModel(input.model, input.notes));
      model = std::move(input.model);
      model.ModelFilePath = path.string();
    });
    return model;
  }

  void OpenLoadCases() {
    for (const std::filesystem::path& path : options_.loadCases) {
      Model loadCase = InputModel(path);
      const std::string fault = LoadCaseFault(model_, loadCase);
      if (!fault.empty()) {
        throw Failure{kExitUsageOrFile, path.string() + ": " + NotACase(fault)};
      }
      cases_.Add(std::move(loadCase));
    }
    cases_.SetThreads(options_.jobs);
    course_.SetLoadCases(cases_);
  }

  /// Fails now, not after the whole run, where the model has no outline.
  void TryOutline() {
    const std::filesystem::path& outline = options_.outputs[Output::kOutline];
    if (outline.empty()) return;
    EndRunOnError(outline.string(), [&] {
      OutlineText(options_.outlineFormat, TraceShape(model_), model_.Thickness);
    });
  }

  /// Likewise where the picture is too large, or its view cannot be drawn.
  void TryPicture() {
    if (!options_.outputs.Wants(Output::kImage)) return;
    PictureOptions picture = options_.picture;
    picture.kind = PictureKind::kModel;
    EndRunOnError(options_.outputs[Output::kImage].string(),
                  [&] { (void)RenderPicture(model_, picture); });
  }

  void Analyse() {
    const bool resumes = !options_.resume.empty();
    EndRunOnError("stress analysis", [&] {
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
    EndRunOnError(fmt::format("optimization step {} (numbered {} in the history)",
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
    if (!summary_.rest) {
      NoteWish(false, fmt::format("not at rest after {} steps", steps));
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
    if (!course_.Figures().lastSolve.converged) {
      NoteWish(false, "no search: the analysis of the whole plate did not converge");
      return;
    }
    if (NonDesignVolume() > (*options_.volumeFraction + kVolumeTolerance) * summary_.startVolume) {
      NoteWish(false, fmt::format("volume fraction {} not reached: the non-design cells alone take "
                                  "{:.4f}",
                                  GeneralText(*options_.volumeFraction),
                                  NonDesignVolume() / summary_.startVolume));
      return;
    }
    EndRunOnError("search", [&] {
      summary_.search = RunSearch(options_, model_, cases_, summary_.startVolume, progress_,
                                  [this] { return GoesOn(); });
    });
    const Attempt& best = summary_.search->Best();
    if (best.reached && best.worstLoss > 1.25) {
      Note(fmt::format("at one stage compliance times volume rose by {:.0f} %: look at the shape",
                       100 * (best.worstLoss - 1)));
    }
    if (GoesOn()) {
      NoteWish(best.reached,
               SearchNote(*summary_.search, *options_.volumeFraction, summary_.startVolume));
    }
    summary_.stages = best.stages;
    if (RecordsSteps(options_.outputs) && GoesOn()) {
      for (const KeptStage& kept : best.stages) Do(kept.stage);
    } else {
      course_.Adopt(best.model, best.cases, best.figures);
    }
  }

  double NonDesignVolume() const {
    return VolumeOfCells(model_, std::ranges::count(model_.CellState.Raw(), kCellNonDesign));
  }

  /// A signal does not end this: the same steps were done before, and there are few.
  void Do(const Stage& stage) {
    Prescribe(stage, model_);
    EndRunOnError("stress analysis", [&] { course_.Analyse(); });
    for (int step = 0; step < stage.steps; ++step) Step();
  }

  void Note(const std::string& note) { summary_.notes.push_back(note); }

  /// Notes what became of the wish; where it was not reached, --quiet does not hide it.
  void NoteWish(bool reached, const std::string& note) {
    wishReached_ = reached;
    Note(note);
    if (!reached && options_.quiet) Complain(note);
  }

  /// Tells what ended the run early. After a failed step the files of the end are written from the
  /// layout that stood before it; where not even that can be analysed again, the model alone.
  void GiveUp(const Failure& failure) {
    std::vector<Failure> faults;
    summary_.error = failure.message;
    if (course_.Figures().solves > 0) {
      bool analysed = true;
      try {
        EndRunOnError("the last layout", [&] { course_.AnalyseAgain(); });
      } catch (const Failure&) {
        analysed = false;
      }
      summary_.error +=
          fmt::format(" ({} the layout after step {})",
                      analysed ? "the files hold" : "only --save holds", course_.Figures().steps);
      WriteFinalFiles(faults, !analysed);
    }
    progress_.Clear();
    Complain(summary_.error);
    CloseAll(faults);
    ComplainOf(faults);
    Judge(faults);
    summary_.exitStatus = failure.exitStatus;
    faults.clear();
    WriteJson(faults);
    ComplainOf(faults);
  }

  void Finish() {
    std::vector<Failure> faults;
    WriteFinalFiles(faults, false);
    CloseAll(faults);
    ComplainOf(faults);
    Judge(faults);
    // The exit status is settled by now: only these two can still change it.
    std::vector<Failure> last;
    WriteJson(last);
    PrintSummary(last);
    ComplainOf(last);
    if (!last.empty()) summary_.exitStatus = last.front().exitStatus;
  }

  void DropLoose() {
    const int dropped = DropLoosePieces(model_, cases_.Others());
    if (dropped == 0) return;
    EndRunOnError("the plate without its loose pieces", [&] { course_.AnalyseAgain(); });
    Note(fmt::format("{} loose {} left out", dropped, dropped == 1 ? "piece was" : "pieces were"));
  }

  void TakeStock() {
    summary_.figures = course_.Figures();
    if (summary_.figures.solves == 0) return;  // there may not even be a mesh
    summary_.compliance = course_.Compliance();
    summary_.cases = cases_.Results();
    summary_.lost = cases_.LostLoads(model_);
    summary_.connected = course_.Connected();
    summary_.caseFiles = {options_.model.string()};
    for (const std::filesystem::path& file : options_.loadCases) {
      summary_.caseFiles.push_back(file.string());
    }
  }

  /// Writes every wanted file of the final model; one that fails does not keep the others from
  /// being written.
  void WriteFinalFiles(std::vector<Failure>& faults, bool modelOnly) {
    TakeStock();
    for (const OutputRow& row : OutputTable()) {
      const std::filesystem::path& path = options_.outputs[row.output];
      if (path.empty() || row.content == nullptr) continue;
      if (modelOnly && row.output != Output::kSave) continue;
      CollectError(faults, path.string(),
                   [&] { WriteOutput(path, row.content(options_, model_, summary_)); });
    }
  }

  /// Completes what was written during the run.
  void CloseAll(std::vector<Failure>& faults) {
    progress_.Clear();
    CollectError(faults, options_.outputs[Output::kHistory].string(),
                 [&] { history_.Close(model_); });
    table_.Finish(faults);
    frames_.Finish(faults);
  }

  /// What is told of an analysed plate beside its numbers.
  void JudgePlate() {
    summary_.pieces = static_cast<int>(FindPieces(model_).pieces.size());
    if (summary_.pieces > 1) Note(fmt::format("the plate has {} separate pieces", summary_.pieces));
    if (!summary_.connected) Note("a load is not connected to adequate supports");
  }

  void Judge(const std::vector<Failure>& faults) {
    TakeStock();
    const CourseFigures& figures = summary_.figures;
    if (figures.unconvergedSolves > 0) {
      Note(fmt::format("the solver did not converge in {} of {} solves, first {}",
                       figures.unconvergedSolves, figures.solves,
                       figures.firstUnconverged == 0
                           ? "in the stress analysis"
                           : fmt::format("at step {}", figures.firstUnconverged)));
    }
    if (figures.solves > 0) JudgePlate();
    if (signal_ != 0) Note(fmt::format("interrupted after step {}", figures.steps));
    if (figures.solves > 0 && !figures.lastSolve.converged) {
      Complain(fmt::format(
          "the last solve did not converge: its displacements and stresses mean nothing; "
          "the plate {}",
          !summary_.connected                   ? "is not held, or has come apart"
          : IsPoissonRatio(model_.PoissonRatio) ? "is held, but too slender for the solver"
                                                : "is held, but Poisson's ratio is not between "
                                                  "-1 and 0.5"));
    }
    const bool fileFailed = std::ranges::any_of(
        faults, [](const Failure& fault) { return fault.exitStatus < kExitSignal; });
    summary_.exitStatus = fileFailed                     ? kExitUsageOrFile
                          : signal_ != 0                 ? kExitSignal + signal_
                          : !figures.lastSolve.converged ? kExitNotConverged
                          : !wishReached_                ? kExitWishNotReached
                                                         : kExitDone;
  }

  void WriteJson(std::vector<Failure>& faults) {
    const std::filesystem::path& json = options_.outputs[Output::kJson];
    if (json.empty()) return;
    CollectError(faults, json.string(), [&] {
      WriteOutput(json, SummaryJson(options_.model.string(), model_, summary_));
    });
  }

  void PrintSummary(std::vector<Failure>& faults) {
    if (options_.quiet) return;
    const bool taken = WritesToStandardOutput(options_.outputs);
    CollectError(faults, taken ? "standard error" : "standard output",
                 [&] { WriteNow(taken ? stderr : stdout, SummaryText(model_, summary_)); });
  }

  static void ComplainOf(const std::vector<Failure>& faults) {
    for (const Failure& fault : faults) Complain(fault.message);
  }

  FreshFiles fresh_;
  const BatchOptions& options_;
  const volatile std::sig_atomic_t& signal_;
  Model model_;
  LoadCases cases_;
  RunSummary summary_;
  History history_;
  ProgressLine progress_;
  CourseTable table_;
  Frames frames_;
  Course course_;
  bool wishReached_ = true;
};

}  // namespace

int RunBatch(const BatchOptions& options, const volatile std::sig_atomic_t& signal) {
  try {
    TellRemarks(options);
    return options.check ? RunCheck(options) : BatchRun(options, signal).Run();
  } catch (const Failure& failure) {
    Complain(failure.message);
    return failure.exitStatus;
  }
}

}  // namespace quillane
