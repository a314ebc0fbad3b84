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

double Forward(WaveSystem& system, double alpha) {
  const FullQuads full(system.full);
  const Quad step = All(alpha);
  QuadNumbers* const r = system.r.data();
  QuadNumbers* const zq = system.zq.data();
  Nodes squares = {All(0.0), All(0.0)};
  const int quads = system.order.Quads();
  for (int quad = 1; quad <= quads; ++quad) {
    const Nodes product = Load(zq[quad]);
    Nodes sum = Load(r[quad]);
    sum = {sum.u - step * product.u, sum.v - step * product.v};
    Store(sum, r[quad]);
    squares = {squares.u + sum.u * sum.u, squares.v + sum.v * sum.v};
    const Before z = LoadBefore(zq, system.order.Around(quad));
    const auto place = static_cast<std::size_t>(quad);
    const FactorRows& rows = system.factor[place];
    const Nodes inverse = Load(rows.inverse);
    if (system.fullForward[place] != 0) {
      sum.u = sum.u - full.diagonalU * z.lowerLeft.u;
      sum.v = sum.v - full.cross * z.lowerLeft.u;
      sum.u = sum.u - full.cross * z.lowerLeft.v;
      sum.v = sum.v - full.diagonalV * z.lowerLeft.v;
      sum.u = sum.u - Load(rows.lower.u) * z.lower.u;
      sum.v = sum.v - Load(rows.lower.v) * z.lower.v;
      sum.u = sum.u - Load(rows.lowerRight.u) * z.lowerRight.u;
      sum.v = sum.v + full.cross * z.lowerRight.u;
      sum.u = sum.u + full.cross * z.lowerRight.v;
      sum.v = sum.v - Load(rows.lowerRight.v) * z.lowerRight.v;
      sum.u = sum.u - Load(rows.left.u) * z.left.u;
      sum.v = sum.v - Load(rows.left.v) * z.left.v;
      Store(Nodes{sum.u * inverse.u, sum.v * inverse.v}, zq[quad]);
    } else {
      const FactorRest& rest = system.rest[place];
      const auto subtract = [&sum](const Nodes& u, const Nodes& v, const Nodes& node) {
        sum.u = sum.u - u.u * node.u;
        sum.v = sum.v - u.v * node.u;
        sum.u = sum.u - v.u * node.v;
        sum.v = sum.v - v.v * node.v;
      };
      const auto subtractCrossed = [&](const QuadNumbers& like, const QuadNumbers& cross,
                                       const Nodes& node) {
        subtract({Load(like.u), Load(cross.v)}, {Load(cross.u), Load(like.v)}, node);
      };
      subtract(Load(rest.lowerLeft[0]), Load(rest.lowerLeft[1]), z.lowerLeft);
      subtractCrossed(rows.lower, rest.lowerCross, z.lower);
      subtractCrossed(rows.lowerRight, rest.lowerRightCross, z.lowerRight);
      subtractCrossed(rows.left, rest.leftCross, z.left);
      const Quad u = sum.u * inverse.u;
      Store(Nodes{u, (sum.v - Load(rest.own) * u) * inverse.v}, zq[quad]);
    }
  }
  return Sum(squares);
}

/// The sums over the nodes after each of a quad's nodes in full material.
HWY_INLINE Nodes SumAfterFull(const FactorRows* factor, const FullQuads& full,
                              const Surroundings& at, const After& z) {
  const FactorRows& right = factor[at.after[0]];
  const Nodes upperLeft =
      FromAbove(factor[at.after[0]].lowerRight, factor[at.afterAbove[0]].lowerRight);
  const Nodes upper = FromAbove(factor[at.after[1]].lower, factor[at.afterAbove[1]].lower);
  Quad u = Load(right.left.u) * z.right.u;
  Quad v = Load(right.left.v) * z.right.v;
  u = u + upperLeft.u * z.upperLeft.u;
  v = v - full.cross * z.upperLeft.u;
  u = u - full.cross * z.upperLeft.v;
  v = v + upperLeft.v * z.upperLeft.v;
  u = u + upper.u * z.upper.u;
  v = v + upper.v * z.upper.v;
  u = u + full.diagonalU * z.upperRight.u;
  v = v + full.cross * z.upperRight.u;
  u = u + full.cross * z.upperRight.v;
  v = v + full.diagonalV * z.upperRight.v;
  return {u, v};
}

/// Adds to `sum` of one component what the nodes after each of a quad's nodes contribute. Each
/// neighbour's rows are its own: `like` its coupling of that component with that component of the
/// node, and `cross` that of its other component.
template <class Component>
HWY_INLINE Quad AddAfter(const FactorRows* factor, const FactorRest* rest, const Surroundings& at,
                         const After& z, Quad sum, const Component&) {
  constexpr bool kIsU = Component::value == 0;
  const auto add = [&sum](const Quad& like, const Quad& cross, const Nodes& node) {
    sum = sum + (kIsU ? like : cross) * node.u;
    sum = sum + (kIsU ? cross : like) * node.v;
  };
  constexpr auto kLike = kIsU ? &QuadNumbers::u : &QuadNumbers::v;
  constexpr auto kCross = kIsU ? &QuadNumbers::v : &QuadNumbers::u;
  const FactorRows* const own[] = {&factor[at.after[0]], &factor[at.after[1]]};
  const FactorRows* const above[] = {&factor[at.afterAbove[0]], &factor[at.afterAbove[1]]};
  const FactorRest* const ownRest[] = {&rest[at.after[0]], &rest[at.after[1]], &rest[at.after[2]]};
  const FactorRest* const aboveRest[] = {&rest[at.afterAbove[0]], &rest[at.afterAbove[1]],
                                         &rest[at.afterAbove[2]]};
  add(Load(own[0]->left.*kLike), Load(ownRest[0]->leftCross.*kCross), z.right);
  add(FromAbove(own[0]->lowerRight.*kLike, above[0]->lowerRight.*kLike),
      FromAbove(ownRest[0]->lowerRightCross.*kCross, aboveRest[0]->lowerRightCross.*kCross),
      z.upperLeft);
  add(FromAbove(own[1]->lower.*kLike, above[1]->lower.*kLike),
      FromAbove(ownRest[1]->lowerCross.*kCross, aboveRest[1]->lowerCross.*kCross), z.upper);
  const QuadNumbers& lowerLeft = ownRest[2]->lowerLeft[Component::value];
  const QuadNumbers& lowerLeftAbove = aboveRest[2]->lowerLeft[Component::value];
  add(FromAbove(lowerLeft.*kLike, lowerLeftAbove.*kLike),
      FromAbove(lowerLeft.*kCross, lowerLeftAbove.*kCross), z.upperRight);
  return sum;
}

double Backward(WaveSystem& system) {
  const FullQuads full(system.full);
  const QuadNumbers* const r = system.r.data();
  QuadNumbers* const zq = system.zq.data();
  const FactorRows* const factor = system.factor.data();
  const FactorRest* const rest = system.rest.data();
  Nodes products = {All(0.0), All(0.0)};
  for (int quad = system.order.Quads(); quad >= 1; --quad) {
    const Surroundings& at = system.order.Around(quad);
    const After z = LoadAfter(zq, at);
    const Nodes inverse = Load(factor[quad].inverse);
    Nodes own = Load(zq[quad]);
    if (system.fullBackward[static_cast<std::size_t>(quad)] != 0) {
      const Nodes sum = SumAfterFull(factor, full, at, z);
      own = {own.u - sum.u * inverse.u, own.v - sum.v * inverse.v};
    } else {
      own.v = own.v -
              AddAfter(factor, rest, at, z, All(0.0), std::integral_constant<int, 1>()) * inverse.v;
      const Quad first = Load(rest[quad].own) * own.v;
      own.u = own.u -
              AddAfter(factor, rest, at, z, first, std::integral_constant<int, 0>()) * inverse.u;
    }
    Store(own, zq[quad]);
    const Nodes residual = Load(r[quad]);
    products = {products.u + residual.u * own.u, products.v + residual.v * own.v};
  }
  return Sum(products);
}

/// The product's rows of a quad in full material.
HWY_INLINE Nodes FullProduct(const FullQuads& k, const Before& before, const Nodes& own,
                             const After& after) {
  Quad u = k.diagonalU * before.lowerLeft.u;
  Quad v = k.cross * before.lowerLeft.u;
  u = u + k.cross * before.lowerLeft.v;
  v = v + k.diagonalV * before.lowerLeft.v;
  u = u + k.lowerU * before.lower.u;
  v = v + k.lowerV * before.lower.v;
  u = u + k.diagonalU * before.lowerRight.u;
  v = v - k.cross * before.lowerRight.u;
  u = u - k.cross * before.lowerRight.v;
  v = v + k.diagonalV * before.lowerRight.v;
  u = u + k.leftU * before.left.u;
  v = v + k.leftV * before.left.v;
  u = u + k.ownU * own.u;
  v = v + k.ownV * own.v;
  u = u + k.leftU * after.right.u;
  v = v + k.leftV * after.right.v;
  u = u + k.diagonalU * after.upperLeft.u;
  v = v - k.cross * after.upperLeft.u;
  u = u - k.cross * after.upperLeft.v;
  v = v + k.diagonalV * after.upperLeft.v;
  u = u + k.lowerU * after.upper.u;
  v = v + k.lowerV * after.upper.v;
  u = u + k.diagonalU * after.upperRight.u;
  v = v + k.cross * after.upperRight.u;
  u = u + k.cross * after.upperRight.v;
  v = v + k.diagonalV * after.upperRight.v;
  return {u, v};
}

/// The product's rows of any quad.
HWY_INLINE Nodes AnyProduct(const StiffnessPattern& pattern, const Before& before, const Nodes& own,
                            const After& after) {
  const Nodes nodes[kNeighbours] = {before.lowerLeft, before.lower, before.lowerRight,
                                    before.left,      own,          after.right,
                                    after.upperLeft,  after.upper,  after.upperRight};
  Nodes sum = {All(0.0), All(0.0)};
  for (int n = 0; n < kNeighbours; ++n) {
    sum.u = sum.u + Load(pattern.k[n][0].u) * nodes[n].u;
    sum.v = sum.v + Load(pattern.k[n][0].v) * nodes[n].u;
    sum.u = sum.u + Load(pattern.k[n][1].u) * nodes[n].v;
    sum.v = sum.v + Load(pattern.k[n][1].v) * nodes[n].v;
  }
  return sum;
}

double Direction(WaveSystem& system, double alpha, double beta) {
  const FullQuads full(system.full);
  const Quad step = All(alpha);
  const Quad factor = All(beta);
  QuadNumbers* const x = system.x.data();
  QuadNumbers* const p = system.p.data();
  QuadNumbers* const zq = system.zq.data();
  const WaveOrder& order = system.order;
  Nodes products = {All(0.0), All(0.0)};
  int advanced = 1;
  int quad = 1;
  for (int wave = 0; wave < order.Waves(); ++wave) {
    for (const int end = order.FirstOfWave(wave + 4); advanced < end; ++advanced) {
      const Nodes old = Load(p[advanced]);
      const Nodes z = Load(zq[advanced]);
      const Nodes position = Load(x[advanced]);
      Store(Nodes{position.u + step * old.u, position.v + step * old.v}, x[advanced]);
      Store(Nodes{z.u + factor * old.u, z.v + factor * old.v}, p[advanced]);
    }
    for (const int end = order.FirstOfWave(wave + 1); quad < end; ++quad) {
      const Surroundings& at = order.Around(quad);
      const StiffnessPattern& pattern =
          system.patterns[system.patternOf[static_cast<std::size_t>(quad)]];
      const Nodes own = Load(p[quad]);
      const Before before = LoadBefore(p, at);
      const After after = LoadAfter(p, at);
      Nodes sum;
      if (pattern.isFull) {
        const Nodes equation = Load(pattern.equation);
        sum = FullProduct(full, before, own, after);
        sum = {sum.u * equation.u, sum.v * equation.v};
      } else {
        sum = AnyProduct(pattern, before, own, after);
      }
      Store(sum, zq[quad]);
      products = {products.u + own.u * sum.u, products.v + own.v * sum.v};
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
