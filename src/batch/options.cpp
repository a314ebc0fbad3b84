// The command line of quillane-batch, on CLI11.
#include "batch/options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <map>
#include <string>
#include <string_view>

#include "model/types.h"

namespace quillane {
namespace {

constexpr int kSmallestPicture = 2;  // canvas and legend of a pixel each
constexpr int kLargestPicture = 16384;

/// Reads "1200x800". False where it is anything else or too small or large.
bool ParseSize(std::string_view text, int& width, int& height) {
  const char* const end = text.data() + text.size();
  const auto first = std::from_chars(text.data(), end, width);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != 'x') return false;
  const auto second = std::from_chars(first.ptr + 1, end, height);
  const auto usable = [](int size) { return size >= kSmallestPicture && size <= kLargestPicture; };
  return second.ec == std::errc() && second.ptr == end && usable(width) && usable(height);
}

/// What is wrong with the path of an output; empty where nothing is.
std::string NameFault(const std::string& path) { return path.empty() ? "wants a name" : ""; }

/// Forwards the usage error or the help text to its stream and turns it into an exit status.
int Answer(const CLI::App& app, const CLI::ParseError& error) {
  const int code = app.exit(error, std::cout, std::cerr);
  return code == 0 ? 0 : 2;
}

}  // namespace

std::optional<BatchOptions> ParseOptions(int argc, const char* const* argv, int& exitStatus) {
  BatchOptions options;
  std::string size = "1200x800";
  const std::map<std::string, PictureKind> kinds = {{"stress", PictureKind::kStress},
                                                    {"potential", PictureKind::kPotential},
                                                    {"model", PictureKind::kModel}};
  std::string map = "stress";

  CLI::App app(
      "Opens a model, runs the stress analysis, then optimization steps, and writes what is asked "
      "for.\nExit status: 0 done, 1 a run-time error, 2 wrong usage or a file that cannot be read "
      "or written, 130 interrupted.",
      "quillane-batch");
  app.set_version_flag("--version", "quillane-batch " QUILLANE_VERSION);
  app.add_option("MODEL", options.model, "model file")->required();
  app.add_option("--steps", options.steps, "optimization steps after the analysis (default 0)")
      ->check(CLI::Range(0, kIntegerMax))
      ->type_name("N");
  app.add_option("--stress-target", options.stressTarget, "in place of the model's, MPa")
      ->type_name("S");
  app.add_option("--epsilon", options.epsilon, "threshold in place of the model's")->type_name("E");
  app.add_option("--lambda", options.lambda, "forget coefficient in place of the model's")
      ->type_name("L");
  const auto output = [&app](const char* name, std::filesystem::path& path, const char* type,
                             const char* help) {
    app.add_option(name, path, help)->check(NameFault)->type_name(type);
  };
  output("--history", options.history, "FILE", "record the course: step and max, mean, min stress");
  output("--save", options.save, "FILE", "the model as it stands at the end");
  output("--image", options.image, "FILE.png", "the final picture with its legend, as PNG");
  app.add_option("--map", map, "what pictures show: stress (default), potential or model")
      ->check(CLI::IsMember(kinds))
      ->type_name("KIND");
  app.add_option("--size", size, "size of pictures in pixels (default 1200x800)")->type_name("WxH");
  output("--frames", options.frames, "DIR", "a picture of the analysis and of every step");
  output("--cells", options.cells, "FILE.csv", "row,column,state,stress,potential of every cell");
  output("--nodes", options.nodes, "FILE.csv", "node,x,y,u,v of every node");
  app.add_flag("--quiet", options.quiet, "print nothing but errors");
  try {
    app.parse(argc, argv);
    options.map = kinds.at(map);
    if (!ParseSize(size, options.width, options.height)) {
      throw CLI::ValidationError("--size", "wants WIDTHxHEIGHT, each from " +
                                               std::to_string(kSmallestPicture) + " to " +
                                               std::to_string(kLargestPicture) + ", not " + size);
    }
  } catch (const CLI::ParseError& error) {
    exitStatus = Answer(app, error);
    return std::nullopt;
  }
  return options;
}

}  // namespace quillane
