// The command line of quillane-batch.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "image/picture.h"

namespace quillane {

struct BatchOptions {
  std::filesystem::path model;
  int steps = 0;
  std::optional<std::string> stressTarget, epsilon, lambda;          ///< as typed
  std::filesystem::path history, save, image, frames, cells, nodes;  ///< empty: not wanted
  PictureKind map = PictureKind::kStress;
  int width = 1200, height = 800;  ///< of pictures, pixels
  bool quiet = false;
};

/// Reads the command line. Prints help, version or what is wrong with it; then `exitStatus` (0 or
/// 2) is the program's answer and nothing is returned.
std::optional<BatchOptions> ParseOptions(int argc, const char* const* argv, int& exitStatus);

}  // namespace quillane
