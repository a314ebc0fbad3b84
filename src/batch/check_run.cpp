#include <fmt/format.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "batch/failure.h"
#include "batch/messages.h"
#include "batch/model_check.h"
#include "batch/model_input.h"
#include "batch/outputs.h"
#include "batch/run.h"
#include "optimize/load_cases.h"

namespace quillane {
namespace {

/// Returns the findings of a model file. The first model that can be read is kept in `first`; every
/// later one has to be a load case of it.
std::vector<Finding> FindingsOf(const std::filesystem::path& path, std::optional<Model>& first) {
  const std::string text = InputText(path);
  try {
    ModelInput input = ModelFromText(text);
    std::vector<Finding> findings = CheckModel(input.model, input.notes).shown;
    const std::string fault = first ? LoadCaseFault(*first, input.model) : "";
    if (!fault.empty()) findings.push_back({0, fault});
    if (!first) first = std::move(input.model);
    return findings;
  } catch (const ModelFileError& error) {
    return {{0, error.what()}};
  }
}

}  // namespace

int RunCheck(const BatchOptions& options) {
  std::vector<std::filesystem::path> files = {options.model};
  files.insert(files.end(), options.loadCases.begin(), options.loadCases.end());
  std::optional<Model> first;
  std::string text;
  bool isWrong = false;
  for (const std::filesystem::path& path : files) {
    std::vector<Finding> findings;
    EndRunOnError(path.string(), [&] { findings = FindingsOf(path, first); });
    isWrong = isWrong || !findings.empty();
    if (findings.empty() && !options.quiet) findings = {{0, "nothing looks wrong"}};
    for (const Finding& finding : findings) {
      text += fmt::format("{}: {}\n", Printable(path.string()), FindingText(finding));
    }
  }
  EndRunOnError("standard output", [&] { WriteNow(stdout, text); });
  return isWrong ? kExitFindings : kExitDone;
}

}  // namespace quillane
