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

  explicit Constants(const GridSystem& system)
      : Constants(system.stiffness[kAllCells][0], system.stiffness[kAllCells][1]) {}

 private:
  template <class Row>
  Constants(const Row& u, const Row& v)
      : diagonalU(hn::Set(kTag, u[kLowerLeft])),
        diagonalV(hn::Set(kTag, v[kLowerLeft + 1])),
        cross(hn::Set(kTag, u[kLowerLeft + 1])),
        lowerU(hn::Set(kTag, u[kLower])),
        lowerV(hn::Set(kTag, v[kLower + 1])),
        leftU(hn::Set(kTag, u[kLeft])),
        leftV(hn::Set(kTag, v[kLeft + 1])),
        ownU(hn::Set(kTag, u[kOwn])),
        ownV(hn::Set(kTag, v[kOwn + 1])) {}
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

/// The product's rows of nodes that are not ordinary, each from its own couplings.
class UnusualProduct {
 public:
  explicit UnusualProduct(const GridSystem& system)
      : u_(system.p[0]),
        v_(system.p[1]),
        q_(system.q),
        rows_(system.stiffness),
        next_(system.unusual) {
    std::size_t node = 0;
    for (int up = -1; up <= 1; ++up) {
      for (int right = -1; right <= 1; ++right) offset_[node++] = system.grid.Offset(up, right);
    }
  }

  /// All nodes before the element `end` that have not had their turn.
  void Multiply(std::ptrdiff_t end) {
    std::size_t done = 0;
    for (; done < next_.size() && next_[done].at < end; ++done) {
      const UnusualNode& node = next_[done];
      const auto& [rowU, rowV] = rows_[node.code & kAllCells];
      double sumU = 0.0;
      double sumV = 0.0;
      if (node.code > kAllCells) {
        for (std::size_t k = 0; k < 9; ++k) {
          const double u = u_[node.at + offset_[k]];
          const double v = v_[node.at + offset_[k]];
          sumU += rowU[2 * k] * u;
          sumV += rowV[2 * k] * u;
          sumU += rowU[2 * k + 1] * v;
          sumV += rowV[2 * k + 1] * v;
        }
      }
      q_[0][node.at] = (node.code & kEquationU) != 0 ? sumU : 0.0;
      q_[1][node.at] = (node.code & kEquationV) != 0 ? sumV : 0.0;
    }
    next_ = next_.subspan(done);
  }

 private:
  const double* u_;
  const double* v_;
  NodeNumbers q_;
  const StiffnessRows& rows_;
  std::span<const UnusualNode> next_;
  std::ptrdiff_t offset_[9];
};

void Direction(GridSystem& system, double alpha, double beta) {
  const Constants constants(system);
  const Lanes step = hn::Set(kTag, alpha);
  const Lanes factor = hn::Set(kTag, beta);
  const std::ptrdiff_t end = system.grid.Slots();
  const std::ptrdiff_t lead = system.grid.GuardSlots() + kStrip;
  std::ptrdiff_t advanced = 0;
  UnusualProduct unusual(system);
  SegmentSums products;
  std::ptrdiff_t multiplied = 0;
  std::ptrdiff_t t = 0;
  for (std::ptrdiff_t segment = 0; segment < system.grid.Segments(); ++segment) {
    const std::ptrdiff_t segmentEnd = system.grid.Start(segment + 1);
    while (multiplied < segmentEnd) {
      const std::ptrdiff_t to = std::min(multiplied + kStrip, end);
      const std::ptrdiff_t next = std::min(to + lead, end);
      Advance(system, step, factor, advanced, next);
      advanced = next;
      MultiplyOrdinary(system, constants, multiplied, to);
      unusual.Multiply(to * kGridLanes);
      multiplied = to;
    }
    for (; t < segmentEnd; ++t) {
      ForVectors([&](auto h) {
        const std::ptrdiff_t at = t * kGridLanes + h * kWidth;
        products.Add(h, LoadNodes(system.p, at), LoadNodes(system.q, at));
      });
    }
    products.End(system.pieces[0], segment);
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
