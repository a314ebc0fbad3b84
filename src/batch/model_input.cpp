#include "batch/model_input.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <sstream>
#include <system_error>

#include "batch/console.h"
#include "batch/failure.h"
#include "batch/messages.h"
#include "batch/model_check.h"
#include "batch/outputs.h"
#include "batch/search_run.h"
#include "batch/tables.h"
#include "model/number_text.h"
#include "model/safe_file.h"
#include "optimize/course.h"

namespace quillane {
namespace {

constexpr std::size_t kLongestInput = std::size_t{64} << 20;  ///< bytes; a full grid needs four MiB

std::string AllOf(std::FILE* input) {
  std::string text;
  char piece[65536];
  std::ptrdiff_t count = 1;
  while (text.size() <= kLongestInput && (count = ReadSome(input, piece, sizeof piece)) > 0) {
    text.append(piece, static_cast<std::size_t>(count));
  }
  if (count < 0 && errno == EINTR) throw Interrupted("interrupted while the model was read");
  if (count < 0) throw ModelFileError(0, "the file cannot be read: " + SystemReason());
  if (text.size() > kLongestInput) throw ModelFileError(0, "the file is longer than any model");
  return text;
}

Model CheckedModel(const std::filesystem::path& path, bool strict) {
  ModelInput input;
  EndRunOnError(path.string(), [&] {
    input = ModelFromText(InputText(path));
    const ModelFindings findings = CheckModel(input.model, input.notes);
    if (findings.count == 0) return;
    const std::string text = path.string() + ": " + FindingsText(findings);
    if (strict) throw Failure{kExitFindings, text};
    Complain(text);
  });
  input.model.ModelFilePath = path.string();
  return std::move(input.model);
}

void OpenModels(const BatchOptions& options, Model& model, LoadCases& cases) {
  model = CheckedModel(options.model, options.strict);
  for (const std::filesystem::path& path : options.loadCases) {
    Model loadCase = CheckedModel(path, options.strict);
    const std::string fault = LoadCaseFault(model, loadCase);
    if (!fault.empty()) throw Failure{kExitUsageOrFile, path.string() + ": " + fault};
    cases.Add(std::move(loadCase));
  }
  cases.SetThreads(options.jobs);
}

void PrepareSearch(const BatchOptions& options, Model& model, const LoadCases& cases,
                   std::vector<std::string>& notes) {
  CheckSearch(options, model);
  if (!options.lambda) model.Lambda = 1;  // the model's own has no effect
  if (!options.keepLoads) return;
  int kept = 0;
  EndRunOnError("search", [&] { kept = KeepLoadedCells(model, cases); });
  if (kept > 0) {
    notes.push_back(fmt::format("{} design cells at loads were made non-design cells", kept));
  }
}

void CheckPace(Single lambda) {
  const bool paced = lambda > 0 && lambda <= 1;
  if (paced && Course::RestSteps(lambda) <= kIntegerMax) return;
  throw Failure{kExitUsageOrFile,
                fmt::format("--lambda: --until-steady expects a Lambda above 0 and up to 1 with at "
                            "most {} steps of rest, not {}",
                            kIntegerMax, GeneralText(lambda))};
}

/// Fails now, not after the whole run, if the model has no outline, the picture is too large or its
/// view cannot be drawn.
void TryDrawings(const BatchOptions& options, const Model& model) {
  const std::filesystem::path& outline = options.outputs[Output::kOutline];
  if (!outline.empty()) {
    EndRunOnError(outline.string(),
                  [&] { OutlineText(*options.outlineFormat, TraceShape(model), model.Thickness); });
  }
  if (!options.outputs.Wants(Output::kImage)) return;
  PictureOptions picture = options.picture;
  picture.kind = PictureKind::kModel;
  EndRunOnError(options.outputs[Output::kImage].string(),
                [&] { (void)RenderPicture(model, picture); });
}

}  // namespace

std::string InputText(const std::filesystem::path& path) {
  if (path == "-") return AllOf(stdin);
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) throw ModelFileError(0, "no such file");
  if (std::filesystem::is_directory(status)) throw ModelFileError(0, "this is a folder");
  const Stream file(OpenToRead(path), std::fclose);
  if (!file) throw ModelFileError(0, "the file cannot be opened: " + SystemReason());
  return AllOf(file.get());
}

ModelInput ModelFromText(const std::string& text) {
  ModelInput input;
  std::stringbuf buffer(text, std::ios::in);
  input.notes = ReadModel(input.model, buffer);
  input.model.DomainDefined = kTrue;
  return input;
}

void PrepareStart(const BatchOptions& options, Model& model, LoadCases& cases,
                  std::vector<std::string>& notes) {
  OpenModels(options, model, cases);
  if (options.stressTarget) model.StressTarget = *options.stressTarget;
  if (options.epsilon) model.Epsilon = *options.epsilon;
  if (options.lambda) model.Lambda = *options.lambda;
  if (!options.resume.empty()) {
    EndRunOnError(options.resume.string(), [&] { ResumeFrom(model, InputText(options.resume)); });
  }
  if (options.volumeFraction) PrepareSearch(options, model, cases, notes);
  if (options.untilSteady) CheckPace(model.Lambda);
  TryDrawings(options, model);
}

}  // namespace quillane
