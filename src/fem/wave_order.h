// The order in which the fast solver keeps the nodes of a grid. Its few terms are explained here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillane {

/// The sweeps of the preconditioner take the nodes one by one, each after its left neighbour and
/// its three neighbours below. Nodes of equal column + 2 row do not wait for each other:
///
///     row 5 | 10 11 12 13 14 15 16
///     row 4 |  8  9 10 11 12 13 14
///           +---------------------
///     row 3 |  6  7  8  9 10 11 12         +1  +2  +3
///     row 2 |  4  5  6  7  8  9 10         -1   .  +1
///     row 1 |  2  3  4  5  6  7  8         -3  -2  -1
///     row 0 |  0  1  2  3  4  5  6
///
/// The number of a node is its WAVE, column + 2 row. On the right: how many waves before (-) or
/// after (+) a node each of its neighbours stands.
///
/// STRIP: four grid rows; in the drawing strip 0 begins at row 0. The lowest strip may begin below
///     the grid, by the 0 to 3 rows that give the fewest quads. Waves and strips then count rows
///     from there; QuadOf and LaneOf take rows of the grid.
/// QUAD: the nodes of one wave in one strip, one per row; in the drawing the four sixes of strip 0
///     are one quad. It is what the solver computes side by side and keeps together in memory.
/// LANE: a node's place in its quad, its row in the strip. A lane whose node is missing or
///     has no equation holds zeros in every vector. A neighbour in the same row stands in the same
///     lane of another quad of the strip; the one in the row below stands one lane lower, for lane
///     0 in lane 3 of the strip below.
/// STEP: one wave in one strip. A pass goes through the strips from the lowest up, each wave by
///     wave, or exactly backward, and hands on to the next step what that one needs.
/// GAP: three steps without own quad, which empty what is handed on. One stands first, last,
///     between strips, and in place of three or more waves of a strip that have no quad; one or two
///     such waves keep their steps.
///
/// Quads are numbered from 1 in the order of the steps; those without any equation do not exist.
/// Where a quad does not exist quad 0 stands for it, whose vectors and FactorRows are zero.
inline constexpr int kLanes = 4;

using QuadIndex = std::uint16_t;

/// The quads of one wave in a strip and in those below and above it. In a gap `above` goes on after
/// the own quad before it, and `below` leads up to the one after it.
struct Step {
  QuadIndex below, own, above;
};

/// What the equations of a node depend on: the present cells around it and which of its components
/// have an equation. A node without an equation has code 0.
using NodeCode = std::uint8_t;
inline constexpr NodeCode kCellLowerLeft = 1, kCellLowerRight = 2, kCellUpperLeft = 4,
                          kCellUpperRight = 8;
inline constexpr NodeCode kEquationU = 16, kEquationV = 32;

class WaveOrder {
 public:
  /// Lane 3 of a quad stands so many columns left of lane 0.
  static constexpr int kShear = 2 * (kLanes - 1);
  /// Most rows of the lowest strip below the grid, and of the highest above it.
  static constexpr int kMostOutside = kLanes - 1;

  /// The order of a grid's nodes; codes of node (row, column), both from 0, at
  /// [(row + kMostOutside) * (columns + 2 kShear) + kShear + column], with zeros around: kShear
  /// columns beside them, kMostOutside rows below and above. At most 32767 nodes.
  WaveOrder(int rows, int columns, std::span<const NodeCode> codes);

  /// How many quads there are; the largest number of one.
  std::size_t Quads() const { return codes_.size() - 1; }
  /// Codes of a quad's lanes, lane l in byte l.
  std::uint32_t Codes(std::size_t quad) const { return codes_[quad]; }

  /// A neighbour is at most so many waves away.
  static constexpr int kReach = 3;

  /// A gap has kReach steps.
  std::span<const Step> Steps() const { return steps_; }

  /// No neighbour of a quad's nodes is in a quad more than so many steps before it.
  std::size_t Distance() const { return distance_; }

  /// Quad and lane of node (row, column).
  QuadIndex QuadOf(int row, int column) const {
    return QuadAt((row + rowsBelow_) / kLanes, column + 2 * (row + rowsBelow_));
  }
  int LaneOf(int row) const { return (row + rowsBelow_) % kLanes; }

 private:
  /// So many waves later is lane 0 of the next strip in the same column; so many places are empty
  /// at both ends of a strip in quadAt_, so that it can be asked at the waves of the next strips.
  static constexpr int kWavesPerStrip = 2 * kLanes;

  std::size_t Place(int strip, int wave) const {
    const int place = (strip + 1) * places_ + wave - (strip - 1) * kWavesPerStrip;
    return static_cast<std::size_t>(place);
  }
  QuadIndex QuadAt(int strip, int wave) const { return quadAt_[Place(strip, wave)]; }
  void NumberQuads(int rows, int columns, std::span<const NodeCode> codes);
  void MakeSteps(int columns);

  int rowsBelow_ = 0;  ///< of the lowest strip, below the grid
  int strips_ = 0;
  int places_ = 0;                 ///< per strip in quadAt_, with a margin at both ends
  std::vector<QuadIndex> quadAt_;  ///< by strip, from -1, and wave; 0 where there is no quad
  std::vector<std::uint32_t> codes_;
  std::vector<Step> steps_;
  std::size_t distance_ = kReach;
};

}  // namespace quillane
