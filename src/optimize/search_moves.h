// What an attempt of the search tries, in which order.
#pragma once

#include <array>
#include <vector>

#include "model/model.h"

namespace quillane {

/// A stage whose target is chosen from the stresses.
struct Vote {
  Integer epsilon;
  double room = 0;     ///< cells it may leave beyond the aim, as a share of the aim
  Single oneStep = 0;  ///< the Lambda of a single step; 0: the way's, and VoteSteps
};

using Move = std::vector<Vote>;

/// What is tried from a layout, in this order. The layout after every vote without room counts.
inline const std::array<Move, 3> kMoves = {{{{5}, {5}}, {{3}, {5}}, {{1, 0.1}, {5}}}};

/// Votes that let a plate regrow where a broken member has overloaded others.
inline const std::array<Move, 4> kRepairs = {{{{5}, {3}, {3}, {5}, {3}, {5}},
                                              {{1, 0.1}, {3, 0.05}, {5}, {3}, {5}},
                                              {{3}, {3}, {3}, {3}, {5}, {5}},
                                              {{5}, {1, 0.05}, {3, 0.03}, {3}, {5}}}};
inline constexpr double kRepairPaces[] = {0, 0.05};

/// Single steps that leave 5.5 of a cell's potential of 10 and add 0.9 a position above the target:
/// the cell stays where at least 2, 3 or 4 are. Empty cells have little potential to start with and
/// hardly ever come.
inline const std::array<Move, 3> kErosions = {{{{7, 0, 0.45F}}, {{8, 0, 0.45F}}, {{9, 0, 0.45F}}}};
inline constexpr double kErosionPaces[] = {0.02, 0};

/// Epsilons of the votes at the wished volume.
inline constexpr Integer kPolish[] = {3, 5, 5, 3, 7, 5, 3, 5};

}  // namespace quillane
