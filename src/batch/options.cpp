// The command line of quillane-batch, on CLI11.
#include "batch/options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <map>
#include <string_view>

namespace quillane {
namespace {

constexpr int kLargestPicture = 16384;

/// Reads "1200x800". False where it is anything else or outside 1..16384.
bool ParseSize(std::string_view text, int& width, int& height) {
  const char* const end = text.data() + text.size();
  const auto first = std::from_chars(text.data(), end, width);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != 'x') return false;
  const auto second = std::from_chars(first.ptr + 1, end, height);
  const auto usable = [](int size) { return size >= 1 && size <= kLargestPicture; };
  return second.ec == std::errc() && second.ptr == end && usable(width) && usable(height);
}

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
      ->check(CLI::Range(0, 1000000000))
      ->type_name("N");
  app.add_option("--stress-target", options.stressTarget, "in place of the model's, MPa")
      ->type_name("S");
  app.add_option("--epsilon", options.epsilon, "threshold in place of the model's")->type_name("E");
  app.add_option("--lambda", options.lambda, "forget coefficient in place of the model's")
      ->type_name("L");
  app.add_option("--history", options.history, "record the course: step and max, mean, min stress")
      ->type_name("FILE");
  app.add_option("--save", options.save, "the model as it stands at the end")->type_name("FILE");
  app.add_option("--image", options.image, "the final picture with its legend")
      ->type_name("FILE.png");
  app.add_option("--map", map, "what pictures show: stress (default), potential or model")
      ->check(CLI::IsMember(kinds))
      ->type_name("KIND");
  app.add_option("--size", size, "size of pictures in pixels (default 1200x800)")->type_name("WxH");
  app.add_option("--frames", options.frames, "a picture of the analysis and of every step")
      ->type_name("DIR");
  app.add_option("--cells", options.cells, "row,column,state,stress,potential of every cell")
      ->type_name("FILE.csv");
  app.add_option("--nodes", options.nodes, "node,x,y,u,v of every node")->type_name("FILE.csv");
  app.add_flag("--quiet", options.quiet, "print nothing but errors");
  try {
    app.parse(argc, argv);
    options.map = kinds.at(map);
    if (!ParseSize(size, options.width, options.height)) {
      throw CLI::ValidationError("--size", "wants WIDTHxHEIGHT, each from 1 to " +
                                               std::to_string(kLargestPicture) + ", not " + size);
    }
  } catch (const CLI::ParseError& error) {
    exitStatus = Answer(app, error);
    return std::nullopt;
  }
  return options;
}

}  // namespace quillane
