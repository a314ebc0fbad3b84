// The example models at any fineness.
#pragma once

#include <string_view>
#include <vector>

#include "model/model.h"

namespace quillane {

enum class ExampleStart {
  kSketch,      ///< a hand-drawn first layout that follows the load
  kFullDomain,  ///< material in the whole design domain
};

/// Returns the names of the examples: those of their files, without ".model".
std::vector<std::string_view> ExampleNames();

/// Returns an example with refinement x refinement cells (from 1) in place of every cell. A support
/// also holds the nodes between two held neighbours; a load stays at its node. Throws
/// std::invalid_argument for an unknown name or a refinement below 1, RunTimeError (overflow) for
/// more than 32767 nodes.
Model MakeExample(std::string_view name, ExampleStart start, int refinement = 1);

/// Returns an example as it is shipped: the full domain, refined where members would otherwise be
/// too coarse. Throws std::invalid_argument for an unknown name.
Model ShippedExample(std::string_view name);

}  // namespace quillane
