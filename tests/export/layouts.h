// Plates of drawn or random layouts, whose shapes are tested.
#pragma once

#include <string>
#include <vector>

#include "support/plates.h"

namespace quillane::test {

/// Cells of 10 mm as drawn, upper row first: '#' material, 'N' non-design, 'x' cut out, '.' empty.
Model Layout(const std::vector<std::string>& rows);

/// Members, islands and holes of random waves and noise, down to single cells and contacts in
/// corners; with some non-design and cut-out cells, supports and loads.
Model RandomLayout(unsigned seed);

}  // namespace quillane::test
