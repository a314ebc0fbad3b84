// The equation system of a regular grid in the layout of the grid solver.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "fem/skewed_grid.h"
#include "model/model.h"

namespace quillane {

/// One number per node and displacement component: [0] for u, [1] for v, indexed by SkewedGrid::At.
using NodeNumbers = std::array<double*, 2>;
using ConstNodeNumbers = std::array<const double*, 2>;

/// The couplings of a node, in ascending order of equation numbers: u and v of the lower left,
/// lower, lower right and left node, of the node itself, and of the right, upper left, upper and
/// upper right node.
inline constexpr int kCouplings = 18;
inline constexpr int kLowerCouplings = 9;  ///< up to the node's own u, which its v lists
enum Coupling { kLowerLeft = 0, kLower = 2, kLowerRight = 4, kLeft = 6, kOwn = 8 };

/// What a node's place in the grid needs to be known for: the present cells around it, and which of
/// its components have equations.
enum NodeCode : std::uint8_t {
  kCellLowerLeft = 1,
  kCellLowerRight = 2,
  kCellUpperLeft = 4,
  kCellUpperRight = 8,
  kAllCells = 15,
  kEquationU = 16,
  kEquationV = 32,
  kOrdinary = 63,  ///< all cells present, both components free
};

/// Stiffness rows of a node for each of the 16 sets of present cells around it: [set][component].
using StiffnessRows = std::array<std::array<std::array<double, kCouplings>, 2>, 16>;

/// A node that the product cannot treat as an ordinary one.
struct UnusualNode {
  std::int32_t at;
  std::uint8_t code;
};

/// A sum of products over all equations, in pieces: the part of one grid row that lies in one
/// segment, at [segment * kGridLanes + lane]. The passes leave rough totals of the products and of
/// their sizes; Sums in ordered_sum.cpp turns them into rounded totals and the bounds between which
/// these hold.
struct SumPieces {
  double* total = nullptr;
  double* size = nullptr;
  double* limit = nullptr;
};

/// All numbers of one solve. The arrays live in Model::SolverSpace; those of doubles may be read
/// grid.GuardSlots() * kGridLanes elements before their first and after their last element, where
/// zeros stand.
struct GridSystem {
  SkewedGrid grid{1, 1};
  StiffnessRows stiffness{};
  double tolerance = 0;  ///< the smallest pivot, and the residual's bound relative to the load

  /// As in PreconditionedCG. z and q share their memory: the product of a slot is written when the
  /// direction has taken the slot's z, and z is written when the residual has taken q.
  NodeNumbers x{}, r{}, z{}, p{}, q{};
  NodeNumbers invDiag{};  ///< reciprocal pivots, 0 without equation
  std::array<std::array<double*, kLowerCouplings>, 2>
      lower{};  ///< the factor: [component][coupling]

  std::uint8_t* code = nullptr;  ///< NodeCode of every element of a slot
  /// Lanes of a slot, one bit each, whose factor rows have the ordinary form; the same for all the
  /// factor entries that the backward sweep reads for the slot.
  std::uint16_t* ordinaryForward = nullptr;
  std::uint16_t* ordinaryBackward = nullptr;
  std::span<UnusualNode> unusual;  ///< ascending
  /// Of up to two sums over all equations at a time.
  std::array<SumPieces, 2> pieces{};
};

/// Lays the model's numbered equations out. Empty when the model is no regular grid or when
/// a large grid has so few columns that the layout would be mostly padding; the plain procedures
/// then have to serve. Throws RunTimeError (out of memory).
std::optional<GridSystem> LayOutGrid(Model& model, double tolerance);

/// Writes x + alpha p, the last step of the iteration, into SolutionVector.
void TakeSolution(const GridSystem& system, double alpha, Model& model);

}  // namespace quillane
