// The triangular solves on the skewed grid.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/grid_sweeps.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/grid_targets.h"
#include "hwy/foreach_target.h"
#include "fem/grid_lanes-inl.h"
// clang-format on

#include "fem/grid_kernels.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

using Factor = std::array<std::array<double*, kLowerCouplings>, 2>;

HWY_INLINE Lanes Entry(const Factor& lower, std::size_t c, std::size_t m, std::ptrdiff_t at) {
  return hn::Load(kTag, lower[c][m] + at);
}
HWY_INLINE Lanes Shifted(const Factor& lower, std::size_t c, std::size_t m, std::ptrdiff_t at) {
  return hn::LoadU(kTag, lower[c][m] + at);
}

/// Stiffness towards diagonal neighbours, which the ordinary factor rows share.
struct Constants {
  Lanes leftUU, leftUV, leftVU, leftVV;  // row and column component, towards the lower left
  Lanes rightUV, rightVU;                // towards the lower right

  explicit Constants(const GridSystem& system)
      : Constants(system.stiffness[kAllCells][0], system.stiffness[kAllCells][1]) {}

 private:
  template <class Row>
  Constants(const Row& u, const Row& v)
      : leftUU(hn::Set(kTag, u[kLowerLeft])),
        leftUV(hn::Set(kTag, u[kLowerLeft + 1])),
        leftVU(hn::Set(kTag, v[kLowerLeft])),
        leftVV(hn::Set(kTag, v[kLowerLeft + 1])),
        rightUV(hn::Set(kTag, u[kLowerRight + 1])),
        rightVU(hn::Set(kTag, v[kLowerRight])) {}
};

/// z of the nodes around one vector's nodes that the sweep has passed; first to last in the order
/// the row's sum takes them.
struct Passed {
  Nodes lowerLeft, lower, lowerRight, left;
};

HWY_INLINE Nodes ForwardOrdinary(const Factor& lower, const NodeNumbers& invDiag,
                                 const Constants& k, const Passed& z, const Nodes& r,
                                 std::ptrdiff_t at) {
  Lanes u = Minus(r.u, k.leftUU, z.lowerLeft.u);
  Lanes v = Minus(r.v, k.leftVU, z.lowerLeft.u);
  u = Minus(u, k.leftUV, z.lowerLeft.v);
  v = Minus(v, k.leftVV, z.lowerLeft.v);
  u = Minus(u, Entry(lower, 0, kLower, at), z.lower.u);
  v = Minus(v, Entry(lower, 1, kLower + 1, at), z.lower.v);
  u = Minus(u, Entry(lower, 0, kLowerRight, at), z.lowerRight.u);
  v = Minus(v, k.rightVU, z.lowerRight.u);
  u = Minus(u, k.rightUV, z.lowerRight.v);
  v = Minus(v, Entry(lower, 1, kLowerRight + 1, at), z.lowerRight.v);
  u = Minus(u, Entry(lower, 0, kLeft, at), z.left.u);
  v = Minus(v, Entry(lower, 1, kLeft + 1, at), z.left.v);
  const Nodes inverse = LoadNodes(invDiag, at);
  return {hn::Mul(u, inverse.u), hn::Mul(v, inverse.v)};
}

HWY_INLINE Nodes ForwardAny(const Factor& lower, const NodeNumbers& invDiag, const Passed& z,
                            const Nodes& r, std::ptrdiff_t at) {
  const Nodes around[] = {z.lowerLeft, z.lower, z.lowerRight, z.left};
  Lanes u = r.u;
  Lanes v = r.v;
  for (std::size_t node = 0; node < 4; ++node) {
    u = Minus(u, Entry(lower, 0, 2 * node, at), around[node].u);
    u = Minus(u, Entry(lower, 0, 2 * node + 1, at), around[node].v);
    v = Minus(v, Entry(lower, 1, 2 * node, at), around[node].u);
    v = Minus(v, Entry(lower, 1, 2 * node + 1, at), around[node].v);
  }
  const Nodes inverse = LoadNodes(invDiag, at);
  u = hn::Mul(u, inverse.u);
  v = Minus(v, Entry(lower, 1, kOwn, at), u);
  return {u, hn::Mul(v, inverse.v)};
}

void Forward(GridSystem& system, double alpha) {
  const Constants constants(system);
  const Lanes step = hn::Set(kTag, alpha);
  const Factor lower = system.lower;
  const NodeNumbers invDiag = system.invDiag, r = system.r, q = system.q, z = system.z;
  const std::ptrdiff_t lowerRight = system.grid.Offset(-1, 1);
  Passed passed[kVectors];
  const Nodes zero{hn::Zero(kTag), hn::Zero(kTag)};
  ForVectors([&](auto h) { passed[h] = {zero, zero, zero, zero}; });
  SegmentSums squares;
  std::ptrdiff_t t = 0;
  for (std::ptrdiff_t segment = 0; segment < system.grid.Segments(); ++segment) {
    for (const std::ptrdiff_t end = system.grid.Start(segment + 1); t < end; ++t) {
      const unsigned ordinary = system.ordinaryForward[t];
      ForVectors([&](auto h) {
        const std::ptrdiff_t at = t * kGridLanes + h * kWidth;
        const Nodes product = LoadNodes(q, at);
        Nodes residual = LoadNodes(r, at);
        residual = {Minus(residual.u, step, product.u), Minus(residual.v, step, product.v)};
        StoreNodes(residual, r, at);
        squares.Add(h, residual, residual);
        Passed& around = passed[h];
        around.lowerRight = LoadShifted(z, at + lowerRight);
        const Nodes result = AllSet(ordinary, h)
                                 ? ForwardOrdinary(lower, invDiag, constants, around, residual, at)
                                 : ForwardAny(lower, invDiag, around, residual, at);
        StoreNodes(result, z, at);
        around = {around.lower, around.lowerRight, around.lowerRight, result};
      });
    }
    squares.End(system.pieces[0], segment);
  }
}

/// z of the nodes around one vector's nodes that the backward sweep has passed, in the order of the
/// row's sum.
struct PassedAbove {
  Nodes right, upperLeft, upper, upperRight;
};

/// Where the factor rows of those nodes stand.
struct Above {
  std::ptrdiff_t right, upperLeft, upper, upperRight;
};

HWY_INLINE Nodes BackwardOrdinary(const Factor& lower, const NodeNumbers& invDiag,
                                  const Constants& k, const PassedAbove& above, const Nodes& z,
                                  const Above& place, std::ptrdiff_t at) {
  Lanes u = hn::Mul(Entry(lower, 0, kLeft, place.right), above.right.u);
  Lanes v = hn::Mul(Entry(lower, 1, kLeft + 1, place.right), above.right.v);
  u = Plus(u, Shifted(lower, 0, kLowerRight, place.upperLeft), above.upperLeft.u);
  v = Plus(v, k.rightUV, above.upperLeft.u);
  u = Plus(u, k.rightVU, above.upperLeft.v);
  v = Plus(v, Shifted(lower, 1, kLowerRight + 1, place.upperLeft), above.upperLeft.v);
  u = Plus(u, Shifted(lower, 0, kLower, place.upper), above.upper.u);
  v = Plus(v, Shifted(lower, 1, kLower + 1, place.upper), above.upper.v);
  u = Plus(u, k.leftUU, above.upperRight.u);
  v = Plus(v, k.leftUV, above.upperRight.u);
  u = Plus(u, k.leftVU, above.upperRight.v);
  v = Plus(v, k.leftVV, above.upperRight.v);
  const Nodes inverse = LoadNodes(invDiag, at);
  return {Minus(z.u, u, inverse.u), Minus(z.v, v, inverse.v)};
}

/// The sum over the nodes above for component c, added to `sum`.
HWY_INLINE Lanes SumAbove(const Factor& lower, const PassedAbove& above, const Above& place,
                          std::size_t c, Lanes sum) {
  sum = Plus(sum, Shifted(lower, 0, kLeft + c, place.right), above.right.u);
  sum = Plus(sum, Shifted(lower, 1, kLeft + c, place.right), above.right.v);
  sum = Plus(sum, Shifted(lower, 0, kLowerRight + c, place.upperLeft), above.upperLeft.u);
  sum = Plus(sum, Shifted(lower, 1, kLowerRight + c, place.upperLeft), above.upperLeft.v);
  sum = Plus(sum, Shifted(lower, 0, kLower + c, place.upper), above.upper.u);
  sum = Plus(sum, Shifted(lower, 1, kLower + c, place.upper), above.upper.v);
  sum = Plus(sum, Shifted(lower, 0, kLowerLeft + c, place.upperRight), above.upperRight.u);
  return Plus(sum, Shifted(lower, 1, kLowerLeft + c, place.upperRight), above.upperRight.v);
}

HWY_INLINE Nodes BackwardAny(const Factor& lower, const NodeNumbers& invDiag,
                             const PassedAbove& above, const Nodes& z, const Above& place,
                             std::ptrdiff_t at) {
  const Nodes inverse = LoadNodes(invDiag, at);
  const Lanes v = Minus(z.v, SumAbove(lower, above, place, 1, hn::Zero(kTag)), inverse.v);
  const Lanes own = hn::Mul(Entry(lower, 1, kOwn, at), v);
  return {Minus(z.u, SumAbove(lower, above, place, 0, own), inverse.u), v};
}

void Backward(GridSystem& system) {
  const Constants constants(system);
  const Factor lower = system.lower;
  const NodeNumbers invDiag = system.invDiag, z = system.z;
  const SkewedGrid& grid = system.grid;
  const Above offset{grid.Offset(0, 1), grid.Offset(1, -1), grid.Offset(1, 0), grid.Offset(1, 1)};
  PassedAbove passed[kVectors];
  const Nodes zero{hn::Zero(kTag), hn::Zero(kTag)};
  ForVectors([&](auto h) { passed[h] = {zero, zero, zero, zero}; });
  SegmentSums products;
  std::ptrdiff_t t = grid.Slots();
  for (std::ptrdiff_t segment = grid.Segments() - 1; segment >= 0; --segment) {
    for (const std::ptrdiff_t start = grid.Start(segment); t > start;) {
      --t;
      const unsigned ordinary = system.ordinaryBackward[t];
      ForVectors([&](auto h) {
        const std::ptrdiff_t at = t * kGridLanes + h * kWidth;
        const Above place{at + offset.right, at + offset.upperLeft, at + offset.upper,
                          at + offset.upperRight};
        PassedAbove& above = passed[h];
        above.upperLeft = LoadShifted(z, place.upperLeft);
        const Nodes forward = LoadNodes(z, at);
        const Nodes result =
            AllSet(ordinary, h)
                ? BackwardOrdinary(lower, invDiag, constants, above, forward, place, at)
                : BackwardAny(lower, invDiag, above, forward, place, at);
        StoreNodes(result, z, at);
        products.Add(h, result, LoadNodes(system.r, at));
        above = {result, above.upperLeft, above.upperLeft, above.upper};
      });
    }
    products.End(system.pieces[1], segment);
  }
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(Forward);
HWY_EXPORT(Backward);
}  // namespace

void ForwardPass(GridSystem& system, double alpha) { HWY_DYNAMIC_DISPATCH(Forward)(system, alpha); }

void BackwardPass(GridSystem& system) { HWY_DYNAMIC_DISPATCH(Backward)(system); }

}  // namespace quillane
#endif  // HWY_ONCE
