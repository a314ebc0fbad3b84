// The order in which the fast solver keeps the nodes of a grid. Its few terms are explained here.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillane {

/// The sweeps of the preconditioner take the nodes one by one, each after its left neighbour and
/// its three neighbours below. Nodes of equal column + 2 row do not wait for each other:
///
///     row 5 | 10 11 12 13 14 15 16      The number of a node is its WAVE, column + 2 row. Its
///     row 4 |  8  9 10 11 12 13 14      neighbours stand so many waves before (-) or after (+) it:
///           +---------------------
///     row 3 |  6  7  8  9 10 11 12         +1  +2  +3
///     row 2 |  4  5  6  7  8  9 10         -1   .  +1
///     row 1 |  2  3  4  5  6  7  8         -3  -2  -1
///     row 0 |  0  1  2  3  4  5  6
///
/// STRIP: four grid rows, strip s the rows 4 s to 4 s + 3.
/// QUAD: the nodes of one wave in one strip, one per row; in the drawing the four sixes of strip 0
///     are one quad. It is what the solver computes side by side and keeps together in memory.
/// LANE: a node's place in its quad, its row modulo 4. A lane that holds no node with an equation
///     holds zeros. A neighbour in the same row stands in the same lane of another quad of the
///     strip; the one in the row below stands one lane lower, for lane 0 in lane 3 of the strip
///     below.
///
/// Quads are numbered from 1, wave by wave and upward within a wave; those without any equation do
/// not exist. Where a neighbour does not exist quad 0 stands for it, all zeros.
inline constexpr int kLanes = 4;

using QuadIndex = std::uint16_t;

/// The quads around a quad, 1, 2 and 3 waves away: of the same strip, and of the strip below
/// (before) and above (after).
struct Surroundings {
  std::array<QuadIndex, 3> before, beforeBelow;  ///< waves w - 1, w - 2, w - 3
  std::array<QuadIndex, 3> after, afterAbove;    ///< waves w + 1, w + 2, w + 3
};

/// What the equations of a node depend on: the present cells around it and which of its components
/// have an equation. A node without an equation has code 0.
using NodeCode = std::uint8_t;
inline constexpr NodeCode kCellLowerLeft = 1, kCellLowerRight = 2, kCellUpperLeft = 4,
                          kCellUpperRight = 8;
inline constexpr NodeCode kEquationU = 16, kEquationV = 32;

class WaveOrder {
 public:
  /// The order of a grid's nodes; codes of node (row, column), both from 0, at
  /// [row * columns + column]. At most 32767 nodes, so that a quad's index
  /// fits 16 bits.
  WaveOrder(int rows, int columns, std::span<const NodeCode> codes);

  /// Largest number of a quad.
  std::size_t Quads() const { return surroundings_.size() - 1; }
  const Surroundings& Around(std::size_t quad) const { return surroundings_[quad]; }
  /// Codes of a quad's lanes, lane l in byte l.
  std::uint32_t Codes(std::size_t quad) const { return codes_[quad]; }

  int Waves() const { return static_cast<int>(firstOfWave_.size()) - 1; }
  /// First quad of a wave from 0 or, where the wave is empty, of the next that is not; past the
  /// last wave one more than Quads().
  std::size_t FirstOfWave(int wave) const {
    return firstOfWave_[static_cast<std::size_t>(std::min(wave, Waves()))];
  }

  /// Quad of node (row, column); its lane is row % kLanes.
  QuadIndex QuadOf(int row, int column) const {
    return quadAt_[Place(row / kLanes, column + 2 * (row % kLanes))];
  }

 private:
  /// Where quadAt_ keeps the quad of a strip whose lane 0 stands in `column`.
  std::size_t Place(int strip, int column) const {
    return static_cast<std::size_t>((strip + 1) * places_ + column + kStripStep);
  }

  /// Lane 0 of the strip above, in the same column, is so many waves later. The neighbours of a
  /// quad stand nearer, so the margin of quadAt_ is as wide.
  static constexpr int kStripStep = 2 * kLanes;

  int places_;                     ///< per strip in quadAt_, with a margin at both ends
  std::vector<QuadIndex> quadAt_;  ///< by strip and column of lane 0; 0 where there is no quad
  std::vector<Surroundings> surroundings_;
  std::vector<std::uint32_t> codes_;
  std::vector<std::size_t> firstOfWave_;
};

}  // namespace quillane
