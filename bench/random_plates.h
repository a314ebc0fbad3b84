// Plates that nobody has chosen, for judging what a search for a wished volume makes of them.
#pragma once

#include <cstdint>
#include <string>

#include "model/model.h"

namespace quillane {

struct RandomPlate {
  std::string kind;  ///< "cantilever", "half-beam", ...
  Model model;       ///< the full domain
  double wish = 0;   ///< the share of its volume that is wished, 0.3 to 0.8
};

/// Plate `number`, from 1, of a seed: the same on every machine. The kinds alternate. 16 to 63
/// columns and 10 to 39 rows of cells; some have a round hole, a third has no non-design cells. All
/// loads act on material that is held, and the non-design cells take at most half of the wish.
RandomPlate MakeRandomPlate(std::uint32_t seed, int number);

}  // namespace quillane
