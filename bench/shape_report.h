// The shape benchmark's tables, in Markdown.
#pragma once

#include <string>
#include <vector>

#include "shape_cases.h"

namespace quillane {

/// The titles of LineOf.
std::string LineTitles();

/// What became of one plate.
std::string LineOf(const ShapePair& pair);

/// A line for every kind and one for all: plates, reached, ratios of the compliance and of time.
std::string SummaryTable(const std::vector<ShapePair>& pairs);

/// The `count` plates that are not reached or have the largest ratios.
std::string WorstPlates(const std::vector<ShapePair>& pairs, std::size_t count);

}  // namespace quillane
