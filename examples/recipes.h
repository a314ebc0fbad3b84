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

/// The names of the examples: those of their files, without ".model".
std::vector<std::string_view> ExampleNames();

/// An example with refinement x refinement cells (from 1) in place of every cell. A support spreads
/// along the edge between two neighbours that are both held; a load stays at its node. Throws
/// std::invalid_argument for an unknown name or a refinement below 1, RunTimeError (overflow) for
/// more than 32767 nodes.
Model MakeExample(std::string_view name, ExampleStart start, int refinement = 1);

/// An example as it is shipped: the full domain, one of them in cells so fine that its members come
/// out smooth. Throws std::invalid_argument for an unknown name.
Model ShippedExample(std::string_view name);

}  // namespace quillane
