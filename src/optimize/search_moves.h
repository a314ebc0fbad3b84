// What an attempt of the search tries, in which order.
#pragma once

#include <array>
#include <vector>

#include "optimize/vote.h"

namespace quillane {

using Move = std::vector<Vote>;

/// What is tried from a layout, in this order. The layout after every vote without room counts.
inline const std::array<Move, 3> kMoves = {{{{5}, {5}}, {{3}, {5}}, {{1, 0.1}, {5}}}};

/// Votes that let a plate regrow where a broken member has overloaded others.
inline const std::array<Move, 4> kRepairs = {{{{5}, {3}, {3}, {5}, {3}, {5}},
                                              {{1, 0.1}, {3, 0.05}, {5}, {3}, {5}},
                                              {{3}, {3}, {3}, {3}, {5}, {5}},
                                              {{5}, {1, 0.05}, {3, 0.03}, {3}, {5}}}};
inline constexpr double kRepairPaces[] = {0, 0.05};

/// Steps at targets 6 t, 5 t, ..., t, or fewer: the last takes the cells whose potential has been
/// fed least by all of them, which measures their mean stress and that of their neighbours. No cell
/// leaves before, and hardly any comes.
inline const std::array<Move, 3> kErosions = {
    {{{7, 0, 0.09F, 6}}, {{7, 0, 0.13F, 4}}, {{7, 0, 0.17F, 3}}}};
inline constexpr double kErosionPaces[] = {0.02, 0};

/// Epsilons of the votes at the wished volume.
inline constexpr Integer kPolish[] = {3, 5, 5, 3, 7, 5, 3, 5};

}  // namespace quillane
