#include "batch/run.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "batch/console.h"
#include "batch/course_table.h"
#include "batch/failure.h"
#include "batch/frames.h"
#include "batch/messages.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/progress_line.h"
#include "batch/run_summary.h"
#include "batch/search_run.h"
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
  explicit BatchRun(const BatchOptions& options)
      : options_(options),
        progress_(stderr, !options.quiet, PlannedSteps(options)),
        table_(options.outputs[Output::kCourse]),
        frames_(options),
        course_(model_, {&history_, &progress_}) {
    if (options.outputs.Wants(Output::kCourse)) course_.AddListener(table_);
    if (options.outputs.Wants(Output::kFrames)) course_.AddListener(frames_);
  }

  int Run() {
    summary_.remarks = options_.remarks;
    summary_.files.push_back(options_.model.string());
    for (const auto& loadCase : options_.loadCases) summary_.files.push_back(loadCase.string());
    TryOutputs(options_, fresh_);
    PrepareStart(options_, model_, cases_, summary_.notes);
    course_.SetLoadCases(cases_);
    try {
      Analyse();
      options_.volumeFraction ? SearchForVolume() : Steps();
      if (options_.dropLoose) DropLoose();
    } catch (const Failure& failure) {
      GiveUp(failure);
      return summary_.exitStatus;
    }
    Finish();
    return summary_.exitStatus;
  }

 private:
  void Analyse() {
    const bool resumes = !options_.resume.empty();
    EndRunOnError("stress analysis", [&] {
      MarkActiveNodes(model_);
      resumes ? course_.Resume() : course_.Analyse();
      const std::filesystem::path& history = options_.outputs[Output::kHistory];
      if (history.empty()) return;
      resumes ? history_.Resume(model_, history) : history_.Start(model_, history);
    });
    summary_.startVolume = resumes ? FullVolume(model_) : model_.Volume;
  }

  void Step() {
    EndRunOnError(fmt::format("optimization step {} (numbered {} in the history)",
                              course_.Figures().steps + 1, model_.StepCount),
                  [&] { course_.Step(); });
  }

  static bool GoesOn() { return NotedSignal() == 0; }

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

  /// Searches on copies. If something is recorded of every step, runs the stages of the best
  /// attempt once more, with the same result. After a signal adopts the best layout so far,
  /// unrecorded.
  void SearchForVolume() {
    if (!course_.Figures().lastSolve.converged) {
      NoteWish(false, "no search: the analysis of the whole plate did not converge");
      return;
    }
    const double wish = *options_.volumeFraction;
    const double nonDesign =
        VolumeOfCells(model_, std::ranges::count(model_.CellState.Raw(), kCellNonDesign));
    if (nonDesign > (wish + kVolumeTolerance) * summary_.startVolume) {
      NoteWish(false, fmt::format("volume fraction {} not reached: the non-design cells alone take "
                                  "{:.4f}",
                                  GeneralText(wish), nonDesign / summary_.startVolume));
      return;
    }
    EndRunOnError("search", [&] {
      summary_.search = RunSearch(options_, model_, cases_, summary_.startVolume, progress_);
    });
    const Attempt& best = summary_.search->Best();
    if (best.reached && best.worstLoss > 1.25) {
      Note(fmt::format("at one stage compliance times volume rose by {:.0f} %: check the shape",
                       100 * (best.worstLoss - 1)));
    }
    if (GoesOn()) {
      NoteWish(best.reached, SearchNote(*summary_.search, wish, summary_.startVolume));
    }
    summary_.stages = best.stages;
    if (RecordsSteps(options_.outputs) && GoesOn()) {
      for (const KeptStage& kept : best.stages) Do(kept.stage);
    } else {
      course_.Adopt(best.model, best.cases, best.figures);
    }
  }

  /// Runs one stage; not ended by a signal, since these steps are few.
  void Do(const Stage& stage) {
    Prescribe(stage, model_);
    EndRunOnError("stress analysis", [&] { course_.Analyse(); });
    for (int step = 0; step < stage.steps; ++step) Step();
  }

  void Note(const std::string& note) { summary_.notes.push_back(note); }

  /// Notes what became of the wish. --quiet does not hide that it was not reached.
  void NoteWish(bool reached, const std::string& note) {
    summary_.wishReached = reached;
    Note(note);
    if (!reached && options_.quiet) Complain(note);
  }

  /// Reports what ended the run early. After a failed step writes the final files from the layout
  /// before it; if that cannot be analysed again, only the model.
  void GiveUp(const Failure& failure) {
    std::vector<Failure> faults;
    summary_.error = failure.message;
    if (course_.Figures().solves > 0) {
      std::vector<Failure> again;
      CollectError(again, "the last layout", [&] { course_.AnalyseAgain(); });
      summary_.error += fmt::format(" ({} the layout after step {})",
                                    again.empty() ? "the files hold" : "only --save holds",
                                    course_.Figures().steps);
      TakeStock();
      WriteFinalFiles(faults, !again.empty());
    }
    summary_.figures = course_.Figures();
    progress_.Clear();
    Complain(summary_.error);
    Close(faults);
    summary_.exitStatus = failure.exitStatus;
    faults.clear();
    WriteJson(faults);
    ComplainOf(faults);
  }

  void Finish() {
    std::vector<Failure> faults;
    TakeStock();
    WriteFinalFiles(faults, false);
    Close(faults);
    // The exit status is settled; only these two can still change it.
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
    summary_.compliance = course_.Compliance();
    summary_.cases = cases_.Results();
    summary_.lost = cases_.LostLoads(model_);
    summary_.connected = course_.Connected();
  }

  /// Writes every wanted file of the final model, also after one of them has failed.
  void WriteFinalFiles(std::vector<Failure>& faults, bool modelOnly) {
    for (const OutputRow& row : OutputTable()) {
      const std::filesystem::path& path = options_.outputs[row.output];
      if (path.empty() || row.content == nullptr) continue;
      if (modelOnly && row.output != Output::kSave) continue;
      CollectError(faults, path.string(),
                   [&] { WriteOutput(path, row.content(options_, model_, summary_)); });
    }
  }

  /// Completes what was written during the run, reports what could not be written, and judges the
  /// run.
  void Close(std::vector<Failure>& faults) {
    progress_.Clear();
    CollectError(faults, options_.outputs[Output::kHistory].string(),
                 [&] { history_.Close(model_); });
    table_.Finish(faults);
    frames_.Finish(faults);
    ComplainOf(faults);
    const bool written = std::ranges::none_of(
        faults, [](const Failure& fault) { return fault.exitStatus < kExitSignal; });
    Judge(summary_, model_, written);
  }

  void WriteJson(std::vector<Failure>& faults) {
    const std::filesystem::path& json = options_.outputs[Output::kJson];
    if (json.empty()) return;
    CollectError(faults, json.string(), [&] { WriteOutput(json, SummaryJson(model_, summary_)); });
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
  Model model_;
  LoadCases cases_;
  RunSummary summary_;
  History history_;
  ProgressLine progress_;
  CourseTable table_;
  Frames frames_;
  Course course_;
};

}  // namespace

int RunBatch(const BatchOptions& options) {
  try {
    if (!options.quiet) std::ranges::for_each(options.remarks, Complain);
    return options.check ? RunCheck(options) : BatchRun(options).Run();
  } catch (const Failure& failure) {
    Complain(failure.message);
    return failure.exitStatus;
  }
}

}  // namespace quillane
