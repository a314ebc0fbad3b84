// Search direction and stiffness product on the skewed grid.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/grid_product.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/grid_targets.h"
#include "hwy/foreach_target.h"
#include "fem/grid_lanes-inl.h"
// clang-format on

#include <algorithm>

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// Slots whose product is computed in one go.
constexpr std::ptrdiff_t kStrip = 16;

/// The couplings of an ordinary node that are not zero. By the symmetry of the square cell opposite
/// neighbours couple alike and only the diagonal ones couple u with v, which LayOutGrid checks.
struct Constants {
  Lanes diagonalU, diagonalV, cross, lowerU, lowerV, leftU, leftV, ownU, ownV;

  explicit Constants(const GridSystem& system) {
    const auto& u = system.stiffness[kAllCells][0];
    const auto& v = system.stiffness[kAllCells][1];
    diagonalU = hn::Set(kTag, u[kLowerLeft]);
    diagonalV = hn::Set(kTag, v[kLowerLeft + 1]);
    cross = hn::Set(kTag, u[kLowerLeft + 1]);
    lowerU = hn::Set(kTag, u[kLower]);
    lowerV = hn::Set(kTag, v[kLower + 1]);
    leftU = hn::Set(kTag, u[kLeft]);
    leftV = hn::Set(kTag, v[kLeft + 1]);
    ownU = hn::Set(kTag, u[kOwn]);
    ownV = hn::Set(kTag, v[kOwn + 1]);
  }
};

/// Three nodes of a grid row.
struct Triple {
  Nodes left, middle, right;
};

HWY_INLINE Nodes OrdinaryProduct(const Constants& k, const Triple& below, const Triple& own,
                                 const Triple& above) {
  Lanes u = hn::Mul(k.diagonalU, below.left.u);
  Lanes v = hn::Mul(k.cross, below.left.u);
  u = Plus(u, k.cross, below.left.v);
  v = Plus(v, k.diagonalV, below.left.v);
  u = Plus(u, k.lowerU, below.middle.u);
  v = Plus(v, k.lowerV, below.middle.v);
  u = Plus(u, k.diagonalU, below.right.u);
  v = Minus(v, k.cross, below.right.u);
  u = Minus(u, k.cross, below.right.v);
  v = Plus(v, k.diagonalV, below.right.v);
  u = Plus(u, k.leftU, own.left.u);
  v = Plus(v, k.leftV, own.left.v);
  u = Plus(u, k.ownU, own.middle.u);
  v = Plus(v, k.ownV, own.middle.v);
  u = Plus(u, k.leftU, own.right.u);
  v = Plus(v, k.leftV, own.right.v);
  u = Plus(u, k.diagonalU, above.left.u);
  v = Minus(v, k.cross, above.left.u);
  u = Minus(u, k.cross, above.left.v);
  v = Plus(v, k.diagonalV, above.left.v);
  u = Plus(u, k.lowerU, above.middle.u);
  v = Plus(v, k.lowerV, above.middle.v);
  u = Plus(u, k.diagonalU, above.right.u);
  v = Plus(v, k.cross, above.right.u);
  u = Plus(u, k.cross, above.right.v);
  v = Plus(v, k.diagonalV, above.right.v);
  return {u, v};
}

/// q of slots [from, to) as if all nodes were ordinary.
HWY_INLINE void MultiplyOrdinary(const GridSystem& system, const Constants& constants,
                                 std::ptrdiff_t from, std::ptrdiff_t to) {
  const NodeNumbers p = system.p, q = system.q;
  const std::ptrdiff_t row = system.grid.Offset(1, 0);
  for (std::ptrdiff_t h = 0; h < kVectors; ++h) {
    std::ptrdiff_t at = from * kGridLanes + h * kWidth;
    const std::ptrdiff_t end = to * kGridLanes + h * kWidth;
    Triple below, own, above;
    below.left = LoadShifted(p, at - kGridLanes - row);
    below.middle = LoadShifted(p, at - row);
    own.left = LoadNodes(p, at - kGridLanes);
    own.middle = LoadNodes(p, at);
    above.left = LoadShifted(p, at - kGridLanes + row);
    above.middle = LoadShifted(p, at + row);
    for (; at < end; at += kGridLanes) {
      below.right = LoadShifted(p, at + kGridLanes - row);
      own.right = LoadNodes(p, at + kGridLanes);
      above.right = LoadShifted(p, at + kGridLanes + row);
      StoreNodes(OrdinaryProduct(constants, below, own, above), q, at);
      below = {below.middle, below.right, below.right};
      own = {own.middle, own.right, own.right};
      above = {above.middle, above.right, above.right};
    }
  }
}

/// x = x + alpha p, p = z + beta p in slots [from, to).
HWY_INLINE void Advance(const GridSystem& system, Lanes alpha, Lanes beta, std::ptrdiff_t from,
                        std::ptrdiff_t to) {
  for (std::size_t c = 0; c < 2; ++c) {
    double* const p = system.p[c];
    double* const x = system.x[c];
    const double* const z = system.z[c];
    for (std::ptrdiff_t at = from * kGridLanes; at < to * kGridLanes; at += kWidth) {
      const Lanes direction = hn::Load(kTag, p + at);
      hn::Store(Plus(hn::Load(kTag, x + at), alpha, direction), kTag, x + at);
      hn::Store(Plus(hn::Load(kTag, z + at), beta, direction), kTag, p + at);
    }
  }
}

/// The product's row of one node, from its own couplings.
HWY_INLINE void MultiplyUnusual(const GridSystem& system, const UnusualNode& node) {
  const bool used[2] = {(node.code & kEquationU) != 0, (node.code & kEquationV) != 0};
  const auto& rows = system.stiffness[node.code & kAllCells];
  double sum[2] = {0.0, 0.0};
  if (used[0] || used[1]) {
    std::size_t m = 0;
    for (int up = -1; up <= 1; ++up) {
      for (int right = -1; right <= 1; ++right, m += 2) {
        const std::ptrdiff_t at = node.at + system.grid.Offset(up, right);
        for (std::size_t c = 0; c < 2; ++c) {
          sum[c] += rows[c][m] * system.p[0][at];
          sum[c] += rows[c][m + 1] * system.p[1][at];
        }
      }
    }
  }
  for (std::size_t c = 0; c < 2; ++c) system.q[c][node.at] = used[c] ? sum[c] : 0.0;
}

void Direction(GridSystem& system, double alpha, double beta) {
  const Constants constants(system);
  const Lanes step = hn::Set(kTag, alpha);
  const Lanes factor = hn::Set(kTag, beta);
  const std::ptrdiff_t end = system.grid.Slots();
  const std::ptrdiff_t lead = system.grid.GuardSlots() + kStrip;
  std::ptrdiff_t advanced = 0;
  auto unusual = system.unusual.begin();
  for (std::ptrdiff_t from = 0; from < end; from += kStrip) {
    const std::ptrdiff_t to = std::min(from + kStrip, end);
    const std::ptrdiff_t next = std::min(to + lead, end);
    Advance(system, step, factor, advanced, next);
    advanced = next;
    MultiplyOrdinary(system, constants, from, to);
    for (; unusual != system.unusual.end() && unusual->at < to * kGridLanes; ++unusual) {
      MultiplyUnusual(system, *unusual);
    }
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(Direction);
}  // namespace

void DirectionPass(GridSystem& system, double alpha, double beta) {
  HWY_DYNAMIC_DISPATCH(Direction)(system, alpha, beta);
}

}  // namespace quillane
#endif  // HWY_ONCE
