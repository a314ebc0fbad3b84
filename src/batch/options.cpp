#include "batch/options.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <QByteArray>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>

#include "batch/console.h"
#include "batch/failure.h"
#include "batch/messages.h"
#include "batch/option_values.h"
#include "batch/outputs.h"
#include "model/number_text.h"
#include "optimize/volume_search.h"

namespace quillane {
namespace {

constexpr const char* kDescription =
    "Opens a model, runs the stress analysis, then optimization steps, and writes what is asked "
    "for.\n"
    "Exit status: 0 done, 1 a run-time error (or a finding of --check or --strict), 2 wrong usage "
    "or\na file that cannot be read or written, 3 the last solve did not converge, 4 the wish\n"
    "(--volume-fraction, --until-steady) was not reached, 129, 130 or 143 ended by a signal.";

/// Returns a reader of options whose value is one of these words; wanted lists them for a message.
template <class Value>
auto OneOf(const char* wanted, std::map<std::string, Value> values) {
  return [=](const std::string& option, const std::string& word) {
    const auto value = values.find(word);
    if (value != values.end()) return value->second;
    throw CLI::ValidationError(option, fmt::format("expects {}, not \"{}\"", wanted, word));
  };
}

/// The parser with its options, each of which writes into one BatchOptions.
class CommandLine {
 public:
  explicit CommandLine(BatchOptions& options) : options_(options) {
    app_.allow_windows_style_options(false);  // /plate.model is a file
    app_.set_version_flag("--version", "quillane-batch " QUILLANE_VERSION);
    Add("MODEL", "TEXT", "model file; - is standard input", options.model, FileName)->required();
    const auto addCases = [&options](const std::vector<std::string>& names) {
      for (const std::string& name : names) {
        options.loadCases.push_back(FileName("--load-case", name));
      }
    };
    app_.add_option_function<std::vector<std::string>>(
            "--load-case", addCases,
            "model whose supports and loads are one more load case; repeatable")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app_.add_flag("--check", options.check, "only report what looks wrong in MODEL and load cases");
    app_.add_flag("--strict", options.strict, "do not run a MODEL that looks wrong: status 1");
    app_.add_flag("--quiet", options.quiet, "print nothing but errors");
    AddCourse();
    AddFiles(kFileGroup);
    AddFiles(kPictureGroup);
    AddPictureStyle();
    AddFiles(kExportGroup);
    AddOutlineStyle();
  }

  /// Throws CLI::ParseError.
  void Parse(int argc, const char* const* argv) {
    app_.parse(argc, argv);
    std::vector<std::filesystem::path*> inputs = {&options_.model, &options_.resume};
    for (std::filesystem::path& loadCase : options_.loadCases) inputs.push_back(&loadCase);
    for (std::filesystem::path* input : inputs) {
      if (NamesStream(*input, stdin)) *input = "-";
      if (*input == "-") continue;
      if (NamesStream(*input, stdout) || NamesStream(*input, stderr)) {
        throw CLI::ValidationError(input->string(), "standard output and error cannot be read");
      }
    }
    if (std::ranges::count_if(inputs, [](const auto* input) { return *input == "-"; }) > 1) {
      throw CLI::ValidationError("--resume, --load-case",
                                 "only one input can come from standard input");
    }
    for (const OutputRow& row : OutputTable()) {
      std::filesystem::path& path = options_.outputs[row.output];
      if (NamesStream(path, stdout)) path = "-";
      const bool mayBeStream = row.writing == Writing::kAtEnd || row.writing == Writing::kSteps;
      if (!mayBeStream && path == "-") {
        throw CLI::ValidationError(row.option, "cannot go to standard output");
      }
    }
    DeduceOutlineFormat();
    RefuseOtherFormats();
    if (options_.check) {
      RemarkIdle("--check only reads the models", [](const CLI::Option& option) {
        const std::string name = option.get_name();
        return name.starts_with("--") && name != "--check" && name != "--quiet" &&
               name != "--load-case";
      });
      return;
    }
    RemarkPictureStyle();
    RemarkParameters();
  }

  /// Prints the usage error or the help text to its stream and turns it into an exit status.
  int Answer(const CLI::ParseError& error) const {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
      Complain(error.what() + std::string(" (--help lists the options)"));
      return kExitUsageOrFile;
    }
    app_.exit(error, std::cout, std::cerr);
    return std::cout.flush() ? kExitDone : kExitUsageOrFile;
  }

 private:
  /// Adds an option whose value is read(name, text); text is empty if none is given.
  template <class Value, class Read>
  CLI::Option* Add(const std::string& name, const char* type, const std::string& help, Value& value,
                   const Read& read) {
    const auto store = [&value, name, read](const std::string& text) { value = read(name, text); };
    return app_.add_option_function<std::string>(name, store, help)->type_name(type);
  }

  /// Begins a group and adds its outputs.
  void AddFiles(const std::string& group) {
    app_.option_defaults()->group(group);
    for (const OutputRow& row : OutputTable()) {
      if (row.group != group) continue;
      Add(row.option, row.type, row.help, options_.outputs[row.output], FileName);
    }
  }

  /// Viewers recognize the format by the name.
  void RefuseOtherFormats() const {
    const std::filesystem::path& fields = options_.outputs[Output::kVtu];
    const auto ending = QByteArray::fromStdString(fields.extension().string()).toLower();
    if (ending.isEmpty() || ending == ".vtu" || !IsFile(fields)) return;
    throw CLI::ValidationError("--vtu", "expects .vtu, not " + fields.string());
  }

  /// Adds a remark on the given options that `isIdle` accepts.
  template <class IsIdle>
  void RemarkIdle(const std::string& why, const IsIdle& isIdle) {
    std::string names;
    for (const CLI::Option* option : app_.get_options()) {
      const std::string name = option->get_name();
      if (option->count() == 0 || !isIdle(*option)) continue;
      names += (names.empty() ? "" : ", ") + name;
    }
    if (!names.empty()) options_.remarks.push_back(names + ": no effect, " + why);
  }

  void RemarkPictureStyle() {
    const bool anyPicture =
        options_.outputs.Wants(Output::kImage) || options_.outputs.Wants(Output::kFrames);
    if (!anyPicture) {
      RemarkIdle("neither --image nor --frames is given",
                 [](const CLI::Option& option) { return option.get_group() == kPictureGroup; });
    } else if (options_.picture.kind == PictureKind::kModel) {
      RemarkIdle("--map model has no colours by value",
                 [](const CLI::Option& option) { return option.get_name() == "--range"; });
    }
  }

  void RemarkParameters() {
    const auto remark = [this](const char* option, const std::string& value, const char* why) {
      options_.remarks.push_back(fmt::format("{} {}: {}", option, value, why));
    };
    if (options_.stressTarget && !(*options_.stressTarget > 0)) {
      remark("--stress-target", GeneralText(*options_.stressTarget), "not above 0");
    }
    if (options_.epsilon && (*options_.epsilon < 0 || *options_.epsilon > 10)) {
      remark("--epsilon", GeneralText(int{*options_.epsilon}),
             "outside the potential's scale of 0 to 10");
    }
    if (options_.lambda && !(*options_.lambda > 0 && *options_.lambda <= 1)) {
      remark("--lambda", GeneralText(*options_.lambda), "not above 0 and up to 1");
    }
  }

  void AddCourse() {
    app_.option_defaults()->group("Optimization");
    auto* steps = Add("--steps", "N", "optimization steps after the analysis (default 0)",
                      options_.steps, StepCount);
    auto* steady = app_.add_flag("--until-steady", options_.untilSteady,
                                 "step until the layout is at rest; with --steps N, at most N");
    auto* fraction =
        Add("--volume-fraction", "F",
            fmt::format("search for the stiffest plate of this share of the volume, for example "
                        "0.5, in at most {} attempts of {} stages; --lambda and --epsilon restrict "
                        "the search",
                        kMostAttempts, kMostVotes),
            options_.volumeFraction, Share);
    app_.add_flag_callback(
            "--no-keep", [this] { options_.keepLoads = false; },
            "let --volume-fraction remove cells at loads, too")
        ->needs(fraction);
    Add("--jobs", "N",
        "threads of a search and of load cases (default: all cores); they do not change the result",
        options_.jobs, Jobs);
    Add("--resume", "CELLS.csv",
        "continue from a table that --cells wrote in an earlier run of MODEL", options_.resume,
        FileName);
    app_.add_flag("--drop-loose", options_.dropLoose,
                  "leave out pieces that neither carry a load nor are held");
    auto* target = Add("--stress-target", "S", "in place of the model's, MPa",
                       options_.stressTarget, SingleNumber);
    Add("--epsilon", "E", "threshold in place of the model's, a whole number", options_.epsilon,
        IntegerNumber);
    Add("--lambda", "L", "forget coefficient in place of the model's", options_.lambda,
        SingleNumber);
    fraction->excludes(steps)->excludes(steady)->excludes(target);
  }

  void AddPictureStyle() {
    Add("--map", "KIND", "what they show: stress (default), potential or model",
        options_.picture.kind,
        OneOf<PictureKind>("stress, potential or model", {{"stress", PictureKind::kStress},
                                                          {"potential", PictureKind::kPotential},
                                                          {"model", PictureKind::kModel}}));
    Add("--size", "WxH", "pixels (default 1200x800; with --fit, as much of it as needed)",
        options_.picture.size, PixelSize);
    Add("--range", "MIN,MAX", "the colours' range in place of the smallest and largest value",
        options_.picture.style.range, NumberRange);
    app_.add_flag("--fit", options_.picture.fitDomain,
                  "frame the design domain, not the model's view");
    app_.add_flag("--label", options_.label, "write step and volume into them");
    app_.add_flag_callback(
        "--no-grid", [this] { options_.picture.style.grid = false; }, "without axes and grid");
  }

  void AddOutlineStyle() {
    auto* outline = app_.get_option("--outline");
    Add("--outline-format", "FORMAT", "svg, dxf or stl, if the ending of FILE is none of them",
        options_.outlineFormat,
        OneOf<OutlineFormat>("svg, dxf or stl", {{"svg", OutlineFormat::kSvg},
                                                 {"dxf", OutlineFormat::kDxf},
                                                 {"stl", OutlineFormat::kStl}}))
        ->needs(outline);
    app_.add_flag_callback(
            "--smooth", [this] { options_.smooth = SmoothEdges::kDesign; },
            "smooth that edge, except where it has to fit other parts")
        ->needs(outline);
    Add("--smooth-edges", "WHICH",
        "design: the same; all: cut-out and non-design cells, too, and round holes as circles",
        options_.smooth,
        OneOf<SmoothEdges>("design or all",
                           {{"design", SmoothEdges::kDesign}, {"all", SmoothEdges::kAll}}))
        ->needs(outline);
  }

  /// Takes the format of --outline from the file's ending if --outline-format is not given. Throws
  /// CLI::ValidationError if the ending names none.
  void DeduceOutlineFormat() {
    const std::filesystem::path& outline = options_.outputs[Output::kOutline];
    if (outline.empty()) return;
    if (!options_.outlineFormat) options_.outlineFormat = OutlineFormatOf(outline);
    if (options_.outlineFormat) return;
    throw CLI::ValidationError(
        "--outline", outline == "-" ? "expects --outline-format with standard output"
                                    : "expects .svg, .dxf or .stl, not " + outline.string());
  }

  BatchOptions& options_;
  CLI::App app_{kDescription, "quillane-batch"};
};

}  // namespace

std::optional<BatchOptions> ParseOptions(int argc, const char* const* argv, int& exitStatus) {
  BatchOptions options;
  CommandLine commandLine(options);
  try {
    commandLine.Parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    exitStatus = commandLine.Answer(error);
    return std::nullopt;
  }
  return options;
}

}  // namespace quillane
