// The equation system of a regular grid as the fast solver keeps it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "fem/wave_order.h"
#include "model/model.h"

namespace quillane {

/// One number for every lane of a quad.
struct alignas(kLanes * sizeof(double)) LaneNumbers {
  double lane[kLanes];
  bool operator==(const LaneNumbers&) const = default;
};

/// One number for u and one for v of a quad's nodes: a quad's part of a vector, or couplings that
/// the rows of u and the rows of v have.
struct alignas(2 * sizeof(LaneNumbers)) QuadNumbers {
  LaneNumbers u, v;
  bool operator==(const QuadNumbers&) const = default;
};

/// One number for u and one for v of a node.
struct NodeNumbers {
  double u, v;
};

/// The neighbours of a node, and the node, in ascending order of equation numbers.
inline constexpr int kLowerLeft = 0, kLower = 1, kLowerRight = 2, kLeft = 3, kOwn = 4, kRight = 5,
                     kUpperLeft = 6, kUpper = 7, kUpperRight = 8, kNeighbours = 9;
constexpr bool IsCorner(int neighbour) { return neighbour % 2 == 0 && neighbour != kOwn; }

/// Stiffness rows of a quad's nodes (N/mm): [neighbour][its component], for u and for v. Rows of
/// components without an equation are zero; couplings with a neighbour without one are kept: its
/// numbers are zero. Quads of the same codes share a pattern.
struct StiffnessPattern {
  QuadNumbers k[kNeighbours][2];
  QuadNumbers equation;   ///< 1 where the component has an equation, else 0
  bool onlyCornersCross;  ///< u couples with no v but that of corner neighbours, nor v with u
};

/// Returns how many waves this neighbour, one of those before kOwn, precedes the node.
constexpr int WavesBefore(int neighbour) { return neighbour == kLeft ? 1 : 3 - neighbour; }

/// The part of the factor's rows that every quad stores separately: the reciprocal pivots (0
/// without equation) and, with three neighbours, the SAME couplings, of u with u and v with v.
struct FactorRows {
  QuadNumbers inverse, lower, lowerRight, left;
};

/// The rest of the factor's rows: the same couplings with the lower left neighbour; with all four
/// the CROSS ones, of u with the neighbour's v and v with its u; and v with the node's own u. Amid
/// full material they equal the stiffness: by the symmetry of the square the cross couplings with
/// edge neighbours and that of v with the own u cancel to exact zeros, which the pattern leaves
/// out, and each product that would change another one of them has such a zero as a factor.
/// Factorize compares the numbers: quads that equal the stiffness share rest 0, where only corner
/// neighbours cross. Rows without an equation hold the numbers of rest 0.
struct FactorRest {
  QuadNumbers lowerLeft, cross[kOwn];
  LaneNumbers vWithU;
  bool operator==(const FactorRest&) const = default;
};

/// Returns the same couplings of a quad with a neighbour before it.
template <class Rows, class Rest>
constexpr auto& Same(Rows& rows, Rest& rest, int neighbour) {
  return neighbour == kLowerLeft    ? rest.lowerLeft
         : neighbour == kLower      ? rows.lower
         : neighbour == kLowerRight ? rows.lowerRight
                                    : rows.left;
}

/// The numbers of a quad. Rest 0 and couplesUV false allow shortcuts.
struct QuadKind {
  std::uint16_t pattern = 0;  ///< index of its StiffnessPattern
  QuadIndex rest = 0;         ///< index of its FactorRest
  bool couplesUV = false;     ///< v of some node couples with its own u: one waits for the other
};

/// All numbers of one solve. For components without an equation, and for quad 0, vectors,
/// reciprocal pivots and stiffness rows are 0. Other couplings there may be any finite number: each
/// is multiplied by such a 0. A number that is not finite propagates into the sums that the passes
/// return.
struct WaveSystem {
  WaveOrder order;
  int rows, columns;  ///< of nodes
  std::vector<StiffnessPattern> patterns{};
  std::vector<FactorRest> rests{};

  // By quad.
  std::vector<QuadKind> kinds{};
  std::vector<FactorRows> factor{};

  /// As in PreconditionedCG, and y, the result of the forward sweep on r. y and q share yq: the
  /// backward sweep reads a quad's y before the product writes its q, and the residual reads q
  /// before the forward sweep writes y. z is added to p at once and not stored.
  std::vector<QuadNumbers> x{}, p{}, r{}, yq{};
  /// By quad: what the strip above contributes to its lane 3 in the backward sweep. That strip is
  /// finished before this one begins, so its contributions wait here. Entry 0 is never read.
  std::vector<NodeNumbers> toLane3{};

  /// Calls visit(equation, number) for every equation, ascending, with its entry of a vector.
  template <class Visit>
  void ForEachEquation(std::vector<QuadNumbers>& vector, const Visit& visit) const {
    int equation = 0;
    for (int i = 0; i < rows; ++i) {
      const int lane = order.LaneOf(i);
      for (int j = 0; j < columns; ++j) {
        const QuadIndex quad = order.QuadOf(i, j);
        const std::uint32_t code = order.Codes(quad) >> (8 * lane);
        if ((code & kEquationU) != 0) visit(++equation, vector[quad].u.lane[lane]);
        if ((code & kEquationV) != 0) visit(++equation, vector[quad].v.lane[lane]);
      }
    }
  }
};

/// Lays out the model's equations in the numbering of NumberComponents: r holds its LoadVector, all
/// other vectors are zero; of the factor only rest 0 is set. Returns nothing if the mesh is not
/// that of BuildMesh or not all equation numbers are those of NumberComponents; a file can cause
/// either.
std::optional<WaveSystem> LayOutWaves(const Model& model);

}  // namespace quillane
