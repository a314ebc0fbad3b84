#include "batch/check_run.h"

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
#include "optimize/load_cases.h"

namespace quillane {
namespace {

class Check {
 public:
  void Add(const std::filesystem::path& path, bool quiet) {
    const std::vector<Finding> findings = FindingsOf(path);
    isWrong_ = isWrong_ || !findings.empty();
    for (const Finding& finding : findings) {
      text_ += fmt::format("{}: {}\n", Printable(path.string()), FindingText(finding));
    }
    if (findings.empty() && !quiet) text_ += Printable(path.string()) + ": nothing looks wrong\n";
  }

  bool IsWrong() const { return isWrong_; }
  const std::string& Text() const { return text_; }

 private:
  std::vector<Finding> FindingsOf(const std::filesystem::path& path) {
    std::vector<Finding> findings;
    EndRunOnError(path.string(), [&] {
      const std::string text = InputText(path);
      try {
        ModelInput input = ModelFromText(text);
        findings = CheckModel(input.model, input.notes).shown;
        const std::string fault = first_ ? LoadCaseFault(*first_, input.model) : "";
        if (!fault.empty()) findings.push_back({0, NotACase(fault)});
        if (!first_) first_ = std::move(input.model);
      } catch (const ModelFileError& error) {
        findings = {{0, error.what()}};
      }
    });
    return findings;
  }

  std::optional<Model> first_;  ///< that could be read
  std::string text_;
  bool isWrong_ = false;
};

}  // namespace

int RunCheck(const BatchOptions& options) {
  Check check;
  check.Add(options.model, options.quiet);
  for (const std::filesystem::path& loadCase : options.loadCases) {
    check.Add(loadCase, options.quiet);
  }
  EndRunOnError("standard output", [&] { WriteNow(stdout, check.Text()); });
  return check.IsWrong() ? kExitFindings : kExitDone;
}

}  // namespace quillane
