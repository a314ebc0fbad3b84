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
};

/// One number for u and one for v of a quad's nodes: a quad's part of a vector, or one column of
/// its nodes' matrix rows.
struct alignas(2 * sizeof(LaneNumbers)) QuadNumbers {
  LaneNumbers u, v;
};

/// The neighbours of a node in ascending order of equation numbers.
enum Neighbour {
  kLowerLeft,
  kLower,
  kLowerRight,
  kLeft,
  kOwn,
  kRight,
  kUpperLeft,
  kUpper,
  kUpperRight
};
inline constexpr int kNeighbours = 9;

/// Stiffness rows of a quad's nodes (N/mm): [neighbour][its component], for u and for v. Rows of
/// components without an equation are zero. Quads that look the same share one.
struct StiffnessPattern {
  QuadNumbers k[kNeighbours][2];
  QuadNumbers equation;  ///< 1 where the component has an equation, else 0
  bool isFull;           ///< every lane has no equation or is a node in full material
};

/// The rows of a node in full material, that is between four present cells and free: opposite
/// neighbours couple alike, and only diagonal ones couple u with v, the lower left and upper right
/// one by `cross`, the lower right and upper left one by its negative.
struct FullMaterial {
  double cornerU, cornerV, cross, lowerU, lowerV, leftU, leftV, ownU, ownV;
};

/// The part of the factor's rows that every quad needs: the reciprocal pivots (0 without equation),
/// and the couplings of u with u and of v with v of three neighbours.
struct FactorRows {
  QuadNumbers inverse, lower, lowerRight, left;
};

/// The rest of these rows. For a node in full material it is as a rule the stiffness: lower left
/// couples all, lower right crosses, the others do not. Near nodes that are not in full material it
/// can differ, so Factorize compares the numbers; rows without an equation may hold any.
struct FactorRest {
  QuadNumbers lowerLeft;    ///< u with u and v with v
  QuadNumbers cross[kOwn];  ///< [neighbour]: u with its v, v with its u
  LaneNumbers own;          ///< v with the node's own u
};

/// All numbers of one solve; every array is indexed by quad and begins with the zeros of quad 0.
struct WaveSystem {
  WaveOrder order;
  int rows, columns;            ///< of nodes
  std::vector<NodeCode> codes;  ///< of node (row, column) at [row * columns + column]
  std::vector<StiffnessPattern> patterns{};
  std::vector<std::uint16_t> patternOf{};
  FullMaterial full{};

  std::vector<FactorRows> factor{};
  std::vector<FactorRest> rest{};
  /// 1 where the sweep may use `full` in place of every `rest` that it would read for the quad.
  std::vector<std::uint8_t> fullForward{}, fullBackward{};

  /// As in PreconditionedCG. z and q share zq: the direction takes a quad's z before the product
  /// writes its q, and the residual takes q before the sweep writes z.
  std::vector<QuadNumbers> x{}, p{}, r{}, zq{};

  /// Calls visit(equation, number) with every equation, ascending, and its place in a vector.
  template <class Visit>
  void ForEachEquation(std::vector<QuadNumbers>& vector, const Visit& visit) const {
    int equation = 0;
    for (int i = 0; i < rows; ++i) {
      for (int j = 0; j < columns; ++j) {
        const NodeCode code = codes[static_cast<std::size_t>(i * columns + j)];
        if (code == 0) continue;
        QuadNumbers& numbers = vector[order.QuadOf(i, j)];
        if ((code & kEquationU) != 0) visit(++equation, numbers.u.lane[i % kLanes]);
        if ((code & kEquationV) != 0) visit(++equation, numbers.v.lane[i % kLanes]);
      }
    }
  }
};

/// Lays out the model's numbered equations: r holds its LoadVector, all other vectors are zero, the
/// factor is room only. Empty where the mesh is no regular grid or the stiffness not that of
/// square cells.
std::optional<WaveSystem> LayOutWaves(const Model& model);

}  // namespace quillane
