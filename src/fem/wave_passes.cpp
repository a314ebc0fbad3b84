// Product and sweeps, step by step; the factorization is compiled here, too.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/wave_passes.cpp"
// The order counts: the loop over the instruction sets, then what is compiled for each.
// clang-format off
#include "hwy/foreach_target.h"
#include "fem/quad-inl.h"
#include "fem/wave_factor-inl.h"
// clang-format on

#include "fem/wave_passes.h"

#include <algorithm>
#include <span>

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// A coupling from its same and its cross numbers.
HWY_INLINE Coupling Joined(const Nodes& same, const Nodes& cross) {
  return {{same.u, cross.v}, {cross.u, same.v}};
}

/// Full material: opposite neighbours couple alike, and only corner ones cross.
struct FullQuads {
  Nodes crossFalling;
  Coupling rising, falling;  ///< towards lower left and upper right, lower right and upper left
  Nodes vertical, horizontal, own;

  explicit FullQuads(const StiffnessPattern& full)
      : crossFalling(Cross(full, kLowerRight)),
        rising(Joined(Same(full, kLowerLeft), Cross(full, kLowerLeft))),
        falling(Joined(Same(full, kLowerLeft), crossFalling)),
        vertical(Same(full, kLower)),
        horizontal(Same(full, kLeft)),
        own(Same(full, kOwn)) {}

 private:
  static Nodes Same(const StiffnessPattern& full, int n) {
    return {Load(full.k[n][0].u), Load(full.k[n][1].v)};
  }
  static Nodes Cross(const StiffnessPattern& full, int n) {
    const Lanes cross = Load(full.k[n][1].u);
    return {cross, cross};
  }
};

/// Numbers of the neighbours before the nodes of a quad, by Neighbour.
using Before = Nodes[kOwn];

HWY_INLINE Nodes ForwardFull(const FactorRows& rows, const FullQuads& full, const Before& before,
                             Nodes sum) {
  Subtract(full.rising, before[kLowerLeft], sum);
  sum = sum - Load(rows.lower) * before[kLower];
  Subtract(Joined(Load(rows.lowerRight), full.crossFalling), before[kLowerRight], sum);
  return (sum - Load(rows.left) * before[kLeft]) * Load(rows.inverse);
}

HWY_INLINE Nodes ForwardAny(const FactorRows& rows, const FactorRest& rest, bool couplesUV,
                            const Before& before, Nodes sum) {
  for (int n = 0; n < kOwn; ++n) {
    Subtract(Joined(Load(Same(rows, rest, n)), Load(rest.cross[n])), before[n], sum);
  }
  Nodes z;
  z.u = sum.u * Load(rows.inverse.u);
  if (couplesUV) sum.v = sum.v - Load(rest.vWithU) * z.u;
  z.v = sum.v * Load(rows.inverse.v);
  return z;
}

double Forward(WaveSystem& system, double alpha) {
  // Pointers of a pass's own: those in the vectors would be read anew after every store.
  const QuadKind* const kinds = system.kinds.data();
  const FactorRows* const factor = system.factor.data();
  const FactorRest* const rests = system.rest.data();
  QuadNumbers* const r = system.r.data();
  QuadNumbers* const zq = system.zq.data();
  const FullQuads full(system.full);
  const Lanes alphas = All(alpha);
  Nodes squares = Both(0.0);
  Before before = {Both(0.0), Both(0.0), Both(0.0), Both(0.0)};
  for (const Step& at : system.order.Steps()) {
    Nodes z = Both(0.0);
    if (at.own != 0) {
      const std::size_t quad = at.own;
      const Nodes residual = Load(r[quad]) - Load(zq[quad]) * alphas;
      Store(residual, r[quad]);
      squares = squares + residual * residual;
      const QuadKind& kind = kinds[quad];
      if (kind.rest == 0) {
        z = ForwardFull(factor[quad], full, before, residual);
      } else {
        z = ForwardAny(factor[quad], rests[kind.rest], kind.couplesUV, before, residual);
      }
      Store(z, zq[quad]);
    }
    before[kLowerLeft] = before[kLower];
    before[kLower] = before[kLowerRight];
    before[kLowerRight] = FromBelow(z, Load(zq[at.below]));
    before[kLeft] = z;
  }
  return Sum(squares);
}

/// What a quad's z give to the sums of a neighbour of each node.
struct Given {
  Nodes byV, byU;
};
HWY_INLINE Given Give(const QuadNumbers& same, const QuadNumbers& cross, const Nodes& z) {
  return {Nodes{Load(cross.v), Load(same.v)} * z.v, Nodes{Load(same.u), Load(cross.u)} * z.u};
}
HWY_INLINE Nodes operator+(const Nodes& sum, const Given& given) {
  return sum + given.byV + given.byU;
}

double Backward(WaveSystem& system, double alpha) {
  const QuadKind* const kinds = system.kinds.data();
  const FactorRows* const factor = system.factor.data();
  const FactorRest* const rests = system.rest.data();
  NodeNumbers* const toLane3 = system.toLane3.data();
  QuadNumbers* const x = system.x.data();
  QuadNumbers* const p = system.p.data();
  QuadNumbers* const r = system.r.data();
  QuadNumbers* const zq = system.zq.data();
  const Lanes alphas = All(alpha);
  const Nodes zero = Both(0.0);
  Nodes products = zero;
  // A node's couplings with later neighbours stand in their rows: a later quad gives its part as
  // soon as it has its z. At the top of the loop sums[i] is what the row above has given to the
  // nodes i waves before this step, still in the lanes of the givers.
  Nodes sums[WaveOrder::kReach] = {zero, zero, zero};
  Given toLeft = {zero, zero};
  const std::span<const Step> steps = system.order.Steps();
  for (std::size_t k = steps.size(); k-- > 0;) {
    const Step& at = steps[k];
    const Nodes given = sums[0];
    toLane3[at.below] = {Lane0(given.u), Lane0(given.v)};
    sums[0] = sums[1];
    sums[1] = sums[2];
    sums[2] = zero;
    if (at.own == 0) {
      toLeft = {zero, zero};
      continue;
    }
    const std::size_t quad = at.own;
    const FactorRows& rows = factor[quad];
    const QuadKind& kind = kinds[quad];
    const FactorRest& rest = rests[kind.rest];
    Nodes sum = FromAbove(given, {All(toLane3[quad].u), All(toLane3[quad].v)}) + toLeft;
    const Nodes inverse = Load(rows.inverse);
    Nodes z = Load(zq[quad]);
    z.v = z.v - sum.v * inverse.v;
    if (kind.couplesUV) sum.u = sum.u + Load(rest.vWithU) * z.v;
    z.u = z.u - sum.u * inverse.u;
    Store(z, zq[quad]);
    products = products + Load(r[quad]) * z;
    Store(Load(x[quad]) + Load(p[quad]) * alphas, x[quad]);
    sums[0] = sums[0] + Give(rows.lowerRight, rest.cross[kLowerRight], z);
    sums[1] = sums[1] + Give(rows.lower, rest.cross[kLower], z);
    sums[2] = sums[2] + Give(rest.lowerLeft, rest.cross[kLowerLeft], z);
    toLeft = Give(rows.left, rest.cross[kLeft], z);
  }
  return Sum(products);
}

/// A third of a quad's product: what three neighbours in one row of the grid contribute.
HWY_INLINE void AddThird(const StiffnessPattern& pattern, const FullQuads& full, int leftmost,
                         const Nodes (&p)[3], Nodes& sum) {
  if (!pattern.isFull) {
    for (int n = 0; n < 3; ++n) Add(Load(pattern.k[leftmost + n]), p[n], sum);
  } else if (leftmost == kLeft) {
    sum = sum + full.horizontal * p[0];
    sum = sum + full.own * p[1];
    sum = sum + full.horizontal * p[2];
  } else {
    const bool isBelow = leftmost == kLowerLeft;
    Add(isBelow ? full.rising : full.falling, p[0], sum);
    sum = sum + full.vertical * p[1];
    Add(isBelow ? full.falling : full.rising, p[2], sum);
  }
}

/// Three successive waves, the newest last.
using ThreeWaves = Nodes[3];
HWY_INLINE void TakeIn(ThreeWaves& window, const Nodes& next) {
  window[0] = window[1];
  window[1] = window[2];
  window[2] = next;
}

/// A quad's product that is not finished.
struct Unfinished {
  std::size_t quad;
  const StiffnessPattern* pattern;
  Nodes sum;
};

double Direction(WaveSystem& system, double beta) {
  const StiffnessPattern* const patterns = system.patterns.data();
  const QuadKind* const kinds = system.kinds.data();
  QuadNumbers* const p = system.p.data();
  QuadNumbers* const zq = system.zq.data();
  const FullQuads full(system.full);
  const Lanes betas = All(beta);
  Nodes products = Both(0.0);
  ThreeWaves below = {Both(0.0), Both(0.0), Both(0.0)};
  ThreeWaves own = {Both(0.0), Both(0.0), Both(0.0)};
  ThreeWaves above = {Both(0.0), Both(0.0), Both(0.0)};
  Unfinished oneThird{0, patterns, Both(0.0)}, twoThirds = oneThird;
  const std::span<const WaveOrder::Begin> strips = system.order.Strips();
  const Step* const steps = system.order.Steps().data();
  std::size_t next = 1;
  for (std::size_t strip = 0; strip + 1 < strips.size(); ++strip) {
    // p is made one strip ahead: the product reads it there. From then on nobody needs z of that
    // strip, and q overwrites it.
    const std::size_t end = strips[std::min(strip + 2, strips.size() - 1)].quad;
    for (; next < end; ++next) Store(Load(zq[next]) + Load(p[next]) * betas, p[next]);
    // Nine neighbours added one after the other make the processor wait, so three quads are summed
    // at once, each a third further. At step t the quad of t - 2 gets its upper row and is
    // finished, that of t - 1 its own row, that of t its lower row: `above` then ends at t + 1,
    // `own` at t, `below` at t - 1.
    for (const Step* at = steps + strips[strip].step; at < steps + strips[strip + 1].step; ++at) {
      TakeIn(above, FromAbove(Load(p[at[1].own]), Load(p[at[1].above])));
      AddThird(*twoThirds.pattern, full, kUpperLeft, above, twoThirds.sum);
      // Lanes without an equation got numbers of full material; the factor 0 or 1 clears them.
      if (twoThirds.pattern->isFull) {
        twoThirds.sum = twoThirds.sum * Load(twoThirds.pattern->equation);
      }
      Store(twoThirds.sum, zq[twoThirds.quad]);
      products = products + own[1] * twoThirds.sum;  // own[1]: p of the finished quad
      TakeIn(own, Load(p[at->own]));
      twoThirds = oneThird;
      AddThird(*oneThird.pattern, full, kLeft, own, twoThirds.sum);
      oneThird = {at->own, &patterns[kinds[at->own].pattern], Both(0.0)};
      AddThird(*oneThird.pattern, full, kLowerLeft, below, oneThird.sum);
      TakeIn(below, FromBelow(own[2], Load(p[at->below])));
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
HWY_EXPORT(FactorizeAll);
HWY_EXPORT(Direction);
HWY_EXPORT(Forward);
HWY_EXPORT(Backward);
}  // namespace

bool Factorize(WaveSystem& system, double tolerance) {
  FactorRest full{};
  full.lowerLeft = {system.full.k[kLowerLeft][0].u, system.full.k[kLowerLeft][1].v};
  for (int n = 0; n < kOwn; ++n) full.cross[n] = {system.full.k[n][1].u, system.full.k[n][0].v};
  system.rest.assign(1, full);
  return HWY_DYNAMIC_DISPATCH(FactorizeAll)(system, tolerance);
}
double DirectionPass(WaveSystem& system, double beta) {
  return HWY_DYNAMIC_DISPATCH(Direction)(system, beta);
}
double ForwardPass(WaveSystem& system, double alpha) {
  return HWY_DYNAMIC_DISPATCH(Forward)(system, alpha);
}
double BackwardPass(WaveSystem& system, double alpha) {
  return HWY_DYNAMIC_DISPATCH(Backward)(system, alpha);
}

}  // namespace quillane
#endif  // HWY_ONCE
