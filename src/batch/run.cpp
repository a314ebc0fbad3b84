// The batch run: open, analyse, optimize, write, sum up.
#include "batch/run.h"

#include <fmt/format.h>

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "batch/course.h"
#include "batch/output_files.h"
#include "batch/terminal.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/number_text.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"
#include "optimize/optimization_step.h"
#include "optimize/parameters.h"

namespace quillane {
namespace {

namespace fs = std::filesystem;

/// Ends the run with this exit status and message.
struct Failure {
  int exitStatus;
  std::string message;
};

class BatchRun {
 public:
  BatchRun(const BatchOptions& options, const volatile std::sig_atomic_t& interrupted)
      : options_(options),
        interrupted_(interrupted),
        course_(stderr, !options.quiet && IsTerminal(stderr), options.steps) {}

  int Run() {
    RefuseDoubleNames();
    PrepareFolders();
    Open();
    Analyse();
    for (int step = 1; step <= options_.steps && interrupted_ == 0; ++step) Step(step);
    CloseHistory();
    WriteFinalFiles();
    course_.Clear();
    if (!options_.quiet) PrintSummary();
    return interrupted_ == 0 ? kExitDone : kExitInterrupted;
  }

 private:
  /// Runs one stage; what it throws becomes a failure that names the stage.
  template <class Stage>
  static void Named(const std::string& name, Stage&& stage) {
    try {
      stage();
    } catch (const RunTimeError& error) {
      const bool file = error.Kind() == ErrorKind::kFile;
      throw Failure{
          file ? kExitUsageOrFile : kExitRunTimeError,
          name + ": " + error.what() + (error.Advice().empty() ? "" : " " + error.Advice())};
    } catch (const ModelFileError& error) {
      throw Failure{kExitUsageOrFile, name + ": " + error.what()};
    } catch (const FileWriteError& error) {
      throw Failure{kExitUsageOrFile, name + ": " + error.what()};
    } catch (const std::bad_alloc&) {
      throw Failure{kExitRunTimeError, name + ": out of memory"};
    }
  }

  /// Only --save may replace the model, and no output another.
  void RefuseDoubleNames() const {
    std::error_code error;
    const auto whole = [&error](const fs::path& path) {
      return fs::weakly_canonical(fs::absolute(path, error), error);
    };
    std::vector<fs::path> named = {whole(options_.model)};
    for (const fs::path* file :
         {&options_.history, &options_.image, &options_.cells, &options_.nodes, &options_.save}) {
      if (file->empty()) continue;
      const fs::path name = whole(*file);
      const bool inPlace = file == &options_.save && name == named.front();
      if (!inPlace && std::find(named.begin(), named.end(), name) != named.end()) {
        throw Failure{kExitUsageOrFile, file->string() + ": two files of one name"};
      }
      named.push_back(name);
    }
  }

  /// A folder that is missing shows at once, not after an hour of steps.
  void PrepareFolders() {
    std::error_code error;
    for (const fs::path* file :
         {&options_.history, &options_.save, &options_.image, &options_.cells, &options_.nodes}) {
      const fs::path folder = file->parent_path();
      if (!folder.empty() && !fs::is_directory(folder, error)) {
        throw Failure{kExitUsageOrFile, file->string() + ": the folder does not exist"};
      }
    }
    if (options_.frames.empty()) return;
    fs::create_directories(options_.frames, error);
    if (!fs::is_directory(options_.frames, error)) {
      throw Failure{kExitUsageOrFile, options_.frames.string() + ": the folder cannot be made"};
    }
  }

  void Open() {
    Named(options_.model.string(), [&] {
      OpenModelFile(model_, options_.model);
      model_.DomainDefined = kTrue;
    });
    try {
      if (options_.stressTarget) model_.StressTarget = StressTargetFromText(*options_.stressTarget);
      if (options_.epsilon) model_.Epsilon = EpsilonFromText(*options_.epsilon);
      if (options_.lambda) model_.Lambda = LambdaFromText(*options_.lambda);
    } catch (const RunTimeError& error) {
      throw Failure{kExitUsageOrFile, std::string("option value: ") + error.what()};
    }
  }

  void Analyse() {
    Named("stress analysis", [&] {
      MarkActiveNodes(model_);
      NoteSolve(StressAnalysis(model_), 0);
      if (!options_.history.empty()) history_.Start(model_, options_.history);
    });
    ShowState(0);
  }

  void Step(int step) {
    Named(fmt::format("optimization step {} of {} (numbered {} in the history)", step,
                      options_.steps, model_.StepCount),
          [&] { NoteSolve(Optimization(model_, history_), step); });
    ShowState(step);
  }

  void NoteSolve(const SolveReport& report, int step) {
    lastSolve_ = report;
    stepsDone_ = step;
    if (!report.converged && unconverged_++ == 0) firstUnconverged_ = step;
  }

  void ShowState(int step) {
    course_.Show(model_, step);
    if (options_.frames.empty()) return;
    const fs::path frame = options_.frames / fmt::format("frame-{:05}.png", step);
    Named(frame.string(), [&] { Picture(frame); });
  }

  void Picture(const fs::path& path) {
    WritePicture(model_, options_.map, options_.width, options_.height, path);
  }

  void CloseHistory() {
    if (model_.HistoryRecording == 0) return;
    Named(options_.history.string(), [&] { history_.Close(model_); });
  }

  void WriteFinalFiles() {
    const auto write = [](const fs::path& path, const auto& writer) {
      if (!path.empty()) Named(path.string(), writer);
    };
    write(options_.save, [&] { SaveModelFile(model_, options_.save); });
    write(options_.image, [&] { Picture(options_.image); });
    write(options_.cells, [&] { ReplaceFile(options_.cells, CellTable(model_)); });
    write(options_.nodes, [&] { ReplaceFile(options_.nodes, NodeTable(model_)); });
  }

  void PrintSummary() const {
    fmt::print("steps        {}\n", stepsDone_);
    fmt::print("equations    {}\n", lastSolve_.equations);
    fmt::print("iterations   {}\n", lastSolve_.iterations);
    fmt::print("residual     {}\n", ExponentText(lastSolve_.relativeResidual));
    fmt::print("volume       {} mm^3\n", GeneralText(model_.Volume));
    fmt::print("max stress   {} MPa\n", GeneralText(model_.MaxStress));
    fmt::print("mean stress  {} MPa\n", GeneralText(model_.AvgStress));
    fmt::print("min stress   {} MPa\n", GeneralText(model_.MinStress));
    if (unconverged_ > 0) {
      fmt::print("the solver did not converge in {} of {} solves, first {}\n", unconverged_,
                 stepsDone_ + 1,
                 firstUnconverged_ == 0 ? "in the stress analysis"
                                        : fmt::format("at step {}", firstUnconverged_));
    }
    if (interrupted_ != 0) fmt::print("interrupted after step {}\n", stepsDone_);
  }

  const BatchOptions& options_;
  const volatile std::sig_atomic_t& interrupted_;
  Model model_;
  History history_;
  Course course_;
  SolveReport lastSolve_;
  int stepsDone_ = 0;
  int unconverged_ = 0;
  int firstUnconverged_ = 0;
};

}  // namespace

int RunBatch(const BatchOptions& options, const volatile std::sig_atomic_t& interrupted) {
  try {
    return BatchRun(options, interrupted).Run();
  } catch (const Failure& failure) {
    fmt::print(stderr, "quillane-batch: {}\n", failure.message);
    return failure.exitStatus;
  }
}

}  // namespace quillane
