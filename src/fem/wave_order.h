// The order in which the fast solver keeps the nodes of a grid. Its few terms are explained here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillane {

/// The sweeps of the preconditioner process the nodes one by one, each after its left neighbour and
/// its three neighbours below. Nodes of equal column + 2 row are independent of each other:
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
///     are one quad. The solver computes its nodes side by side and keeps them together in memory.
/// LANE: a node's place in its quad, its row in the strip. A lane whose node is missing or
///     has no equation holds zeros in every vector. A neighbour in the same row is in the same
///     lane of another quad of the strip; one in the row below is one lane lower, and for lane 0 in
///     lane 3 of the strip below.
/// STEP: one wave in one strip. A pass runs through the strips from the lowest up, each wave by
///     wave, or exactly backward, and carries values from step to step.
/// GAP: three steps without own quad, which flush the carried values. There is one at the start, at
///     the end, between strips, and in place of three or more waves of a strip that have no quad;
///     one or two such waves keep their steps.
///
/// Quads are numbered from 1 in the order of the steps; those without any equation do not exist.
/// Quad 0 stands for a quad that does not exist; its vectors and FactorRows are zero.
inline constexpr int kLanes = 4;

using QuadIndex = std::uint16_t;

/// The quads of one wave in a strip and in those below and above it. In a gap `above` continues
/// after the last own quad, and `below` leads up to the next one.
struct Step {
  QuadIndex below, own, above;
};

/// What determines the equations of a node: the present cells around it and which of its components
/// have an equation. A node without an equation has code 0.
using NodeCode = std::uint8_t;
inline constexpr NodeCode kCellLowerLeft = 1, kCellLowerRight = 2, kCellUpperLeft = 4,
                          kCellUpperRight = 8;
inline constexpr NodeCode kEquationU = 16, kEquationV = 32;

class WaveOrder {
 public:
  /// Lane 3 of a quad is so many columns left of lane 0.
  static constexpr int kShear = 2 * (kLanes - 1);
  /// The largest number of rows of the lowest strip below the grid, and of the highest above it.
  static constexpr int kMostOutside = kLanes - 1;

  /// Orders a grid's nodes; codes of node (row, column), both from 0, at [(row + kMostOutside) *
  /// (columns + 2 kShear) + kShear + column], with zeros around: kShear columns beside them,
  /// kMostOutside rows below and above. At most 32767 nodes.
  WaveOrder(int rows, int columns, std::span<const NodeCode> codes);

  /// Returns the number of quads, which is the largest number of one.
  std::size_t Quads() const { return codes_.size() - 1; }
  /// Returns the codes of a quad's lanes, lane l in byte l.
  std::uint32_t Codes(std::size_t quad) const { return codes_[quad]; }

  /// The largest distance of a neighbour, in waves.
  static constexpr int kReach = 3;

  /// A gap has kReach steps.
  std::span<const Step> Steps() const { return steps_; }

  /// Returns the largest number of steps by which a quad with a neighbour of another quad's nodes
  /// precedes that quad. A product so many steps behind the backward sweep reads only updated p:
  /// the sweep has passed the later neighbours before, and no earlier one is farther away.
  std::size_t Distance() const { return distance_; }

  /// Returns the quad of node (row, column); LaneOf the lane.
  QuadIndex QuadOf(int row, int column) const {
    return QuadAt((row + rowsBelow_) / kLanes, column + 2 * (row + rowsBelow_));
  }
  int LaneOf(int row) const { return (row + rowsBelow_) % kLanes; }

 private:
  /// The waves from lane 0 of a strip to lane 0 of the next one in the same column. So many places
  /// are empty at both ends of a strip in quadAt_, which allows queries at the waves of the next
  /// strips.
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
