// Product and sweeps, quad by quad in the order of the waves.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/wave_passes.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/vector_targets.h"
#include "hwy/foreach_target.h"
#include "fem/quad-inl.h"
// clang-format on

#include "fem/wave_passes.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// FullMaterial in every lane. Vertical, horizontal and own couplings do not cross.
struct FullQuads {
  Coupling rising, falling;  ///< towards lower left and upper right, lower right and upper left
  Nodes vertical, horizontal, own;

  explicit FullQuads(const FullMaterial& full)
      : rising{All(full.cornerU), All(full.cross), All(full.cross), All(full.cornerV)},
        falling{rising.uu, All(-full.cross), All(-full.cross), rising.vv},
        vertical{All(full.lowerU), All(full.lowerV)},
        horizontal{All(full.leftU), All(full.leftV)},
        own{All(full.ownU), All(full.ownV)} {}
};

/// The four neighbours before each node of a quad, and those after it.
struct Before {
  Nodes lowerLeft, lower, lowerRight, left;
};
struct After {
  Nodes right, upperLeft, upper, upperRight;
};

HWY_INLINE Before LoadBefore(const QuadNumbers* vector, const Surroundings& at) {
  return {FromBelow(vector[at.before[2]], vector[at.beforeBelow[2]]),
          FromBelow(vector[at.before[1]], vector[at.beforeBelow[1]]),
          FromBelow(vector[at.before[0]], vector[at.beforeBelow[0]]), Load(vector[at.before[0]])};
}
HWY_INLINE After LoadAfter(const QuadNumbers* vector, const Surroundings& at) {
  return {Load(vector[at.after[0]]), FromAbove(vector[at.after[0]], vector[at.afterAbove[0]]),
          FromAbove(vector[at.after[1]], vector[at.afterAbove[1]]),
          FromAbove(vector[at.after[2]], vector[at.afterAbove[2]])};
}

HWY_INLINE Coupling Joined(const QuadNumbers& like, const QuadNumbers& cross) {
  return {Load(like.u), Load(cross.u), Load(cross.v), Load(like.v)};
}

HWY_INLINE Nodes ForwardFull(const FactorRows& rows, const FullQuads& full, const Before& z,
                             Nodes sum) {
  Subtract(full.rising, z.lowerLeft, sum);
  sum = sum - Load(rows.lower) * z.lower;
  Subtract({Load(rows.lowerRight.u), full.falling.uv, full.falling.vu, Load(rows.lowerRight.v)},
           z.lowerRight, sum);
  return (sum - Load(rows.left) * z.left) * Load(rows.inverse);
}

HWY_INLINE Nodes ForwardAny(const FactorRows& rows, const FactorRest& rest, const Before& z,
                            Nodes sum) {
  Subtract(Joined(rest.lowerLeft, rest.cross[kLowerLeft]), z.lowerLeft, sum);
  Subtract(Joined(rows.lower, rest.cross[kLower]), z.lower, sum);
  Subtract(Joined(rows.lowerRight, rest.cross[kLowerRight]), z.lowerRight, sum);
  Subtract(Joined(rows.left, rest.cross[kLeft]), z.left, sum);
  const Nodes inverse = Load(rows.inverse);
  const Quad u = sum.u * inverse.u;
  return {u, (sum.v - Load(rest.own) * u) * inverse.v};
}

double Forward(WaveSystem& system, double alpha) {
  const FullQuads full(system.full);
  const Nodes step = {All(alpha), All(alpha)};
  Nodes squares = {All(0.0), All(0.0)};
  for (std::size_t quad = 1; quad < system.zq.size(); ++quad) {
    const Nodes residual = Load(system.r[quad]) - step * Load(system.zq[quad]);
    Store(residual, system.r[quad]);
    squares = squares + residual * residual;
    const FactorRows& rows = system.factor[quad];
    const Before z = LoadBefore(system.zq.data(), system.order.Around(quad));
    Store(system.fullForward[quad] != 0 ? ForwardFull(rows, full, z, residual)
                                        : ForwardAny(rows, system.rest[quad], z, residual),
          system.zq[quad]);
  }
  return Sum(squares);
}

/// Couplings as the neighbours above hold them in their own rows, seen from the nodes.
HWY_INLINE Coupling HeldAbove(const QuadNumbers& like, const QuadNumbers& likeAbove,
                              const QuadNumbers& cross, const QuadNumbers& crossAbove) {
  const Nodes straight = FromAbove(like, likeAbove);
  const Nodes crossed = FromAbove(cross, crossAbove);
  return {straight.u, crossed.v, crossed.u, straight.v};
}

HWY_INLINE Nodes BackwardFull(const FactorRows* factor, const FullQuads& full,
                              const Surroundings& at, const After& z, const Nodes& own,
                              const Nodes& inverse) {
  Nodes sum = Load(factor[at.after[0]].left) * z.right;
  const Nodes upperLeft =
      FromAbove(factor[at.after[0]].lowerRight, factor[at.afterAbove[0]].lowerRight);
  Add({upperLeft.u, full.falling.uv, full.falling.vu, upperLeft.v}, z.upperLeft, sum);
  sum = sum + FromAbove(factor[at.after[1]].lower, factor[at.afterAbove[1]].lower) * z.upper;
  Add(full.rising, z.upperRight, sum);
  return own - sum * inverse;
}

HWY_INLINE Nodes BackwardAny(const FactorRows* factor, const FactorRest* rest, std::size_t quad,
                             const Surroundings& at, const After& z, const Nodes& own,
                             const Nodes& inverse) {
  const FactorRest* const ownRest[] = {rest + at.after[0], rest + at.after[1], rest + at.after[2]};
  const FactorRest* const above[] = {rest + at.afterAbove[0], rest + at.afterAbove[1],
                                     rest + at.afterAbove[2]};
  const Nodes right = Load(factor[at.after[0]].left);
  const Nodes rightCross = Load(ownRest[0]->cross[kLeft]);
  const Nodes nodes[] = {z.right, z.upperLeft, z.upper, z.upperRight};
  const Coupling k[] = {
      {right.u, rightCross.v, rightCross.u, right.v},
      HeldAbove(factor[at.after[0]].lowerRight, factor[at.afterAbove[0]].lowerRight,
                ownRest[0]->cross[kLowerRight], above[0]->cross[kLowerRight]),
      HeldAbove(factor[at.after[1]].lower, factor[at.afterAbove[1]].lower,
                ownRest[1]->cross[kLower], above[1]->cross[kLower]),
      HeldAbove(ownRest[2]->lowerLeft, above[2]->lowerLeft, ownRest[2]->cross[kLowerLeft],
                above[2]->cross[kLowerLeft])};
  Quad sumV = All(0.0);
  for (int n = 0; n < 4; ++n) sumV = (sumV + k[n].vu * nodes[n].u) + k[n].vv * nodes[n].v;
  const Quad v = own.v - sumV * inverse.v;
  Quad sumU = Load(rest[quad].own) * v;
  for (int n = 0; n < 4; ++n) sumU = (sumU + k[n].uu * nodes[n].u) + k[n].uv * nodes[n].v;
  return {own.u - sumU * inverse.u, v};
}

double Backward(WaveSystem& system) {
  const FullQuads full(system.full);
  const FactorRows* const factor = system.factor.data();
  const FactorRest* const rest = system.rest.data();
  Nodes products = {All(0.0), All(0.0)};
  for (std::size_t quad = system.zq.size() - 1; quad > 0; --quad) {
    const Surroundings& at = system.order.Around(quad);
    const After after = LoadAfter(system.zq.data(), at);
    const Nodes own = Load(system.zq[quad]);
    const Nodes inverse = Load(factor[quad].inverse);
    const Nodes z = system.fullBackward[quad] != 0
                        ? BackwardFull(factor, full, at, after, own, inverse)
                        : BackwardAny(factor, rest, quad, at, after, own, inverse);
    Store(z, system.zq[quad]);
    products = products + Load(system.r[quad]) * z;
  }
  return Sum(products);
}

HWY_INLINE Nodes ProductFull(const FullQuads& full, const Before& before, const Nodes& own,
                             const After& after) {
  Nodes sum = {All(0.0), All(0.0)};
  Add(full.rising, before.lowerLeft, sum);
  sum = sum + full.vertical * before.lower;
  Add(full.falling, before.lowerRight, sum);
  sum = ((sum + full.horizontal * before.left) + full.own * own) + full.horizontal * after.right;
  Add(full.falling, after.upperLeft, sum);
  sum = sum + full.vertical * after.upper;
  Add(full.rising, after.upperRight, sum);
  return sum;
}

HWY_INLINE Nodes ProductAny(const StiffnessPattern& pattern, const Before& before, const Nodes& own,
                            const After& after) {
  const Nodes nodes[kNeighbours] = {before.lowerLeft, before.lower, before.lowerRight,
                                    before.left,      own,          after.right,
                                    after.upperLeft,  after.upper,  after.upperRight};
  Nodes sum = {All(0.0), All(0.0)};
  for (int n = 0; n < kNeighbours; ++n) {
    const QuadNumbers& u = pattern.k[n][0];
    const QuadNumbers& v = pattern.k[n][1];
    Add({Load(u.u), Load(v.u), Load(u.v), Load(v.v)}, nodes[n], sum);
  }
  return sum;
}

double Direction(WaveSystem& system, double alpha, double beta) {
  const FullQuads full(system.full);
  const Nodes step = {All(alpha), All(alpha)};
  const Nodes factor = {All(beta), All(beta)};
  const WaveOrder& order = system.order;
  Nodes products = {All(0.0), All(0.0)};
  std::size_t advanced = 1;
  std::size_t quad = 1;
  for (int wave = 0; wave < order.Waves(); ++wave) {
    // The product of this wave reads p up to three waves later. z of those quads is then done with.
    for (const std::size_t end = order.FirstOfWave(wave + 4); advanced < end; ++advanced) {
      const Nodes old = Load(system.p[advanced]);
      Store(Load(system.x[advanced]) + step * old, system.x[advanced]);
      Store(Load(system.zq[advanced]) + factor * old, system.p[advanced]);
    }
    for (const std::size_t end = order.FirstOfWave(wave + 1); quad < end; ++quad) {
      const Surroundings& at = order.Around(quad);
      const StiffnessPattern& pattern = system.patterns[system.patternOf[quad]];
      const Nodes own = Load(system.p[quad]);
      const Before before = LoadBefore(system.p.data(), at);
      const After after = LoadAfter(system.p.data(), at);
      // Lanes without an equation get numbers of full material here; the factor 0 or 1 clears them.
      const Nodes product = pattern.isFull
                                ? ProductFull(full, before, own, after) * Load(pattern.equation)
                                : ProductAny(pattern, before, own, after);
      Store(product, system.zq[quad]);
      products = products + own * product;
    }
  }
  return Sum(products);
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(Direction);
HWY_EXPORT(Forward);
HWY_EXPORT(Backward);
}  // namespace

double DirectionPass(WaveSystem& system, double alpha, double beta) {
  return HWY_DYNAMIC_DISPATCH(Direction)(system, alpha, beta);
}
double ForwardPass(WaveSystem& system, double alpha) {
  return HWY_DYNAMIC_DISPATCH(Forward)(system, alpha);
}
double BackwardPass(WaveSystem& system) { return HWY_DYNAMIC_DISPATCH(Backward)(system); }

}  // namespace quillane
#endif  // HWY_ONCE
