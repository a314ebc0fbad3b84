// Product and sweeps, step by step.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/wave_passes.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/vector_targets.h"
#include "hwy/foreach_target.h"
#include "fem/quad-inl.h"
// clang-format on

#include "fem/wave_passes.h"

#include <algorithm>
#include <span>

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// Where the arrays of a system begin. Copied to each pass, so that they stay in registers.
struct Arrays {
  const StiffnessPattern* patterns;
  const FactorRest* rest;
  const QuadKind* kinds;
  const FactorRows* factor;
  QuadNumbers *x, *p, *r, *zq;

  explicit Arrays(WaveSystem& system)
      : patterns(system.patterns.data()),
        rest(system.rest.data()),
        kinds(system.kinds.data()),
        factor(system.factor.data()),
        x(system.x.data()),
        p(system.p.data()),
        r(system.r.data()),
        zq(system.zq.data()) {}
};

HWY_INLINE Coupling LoadCoupling(const QuadNumbers (&k)[2]) { return {Load(k[0]), Load(k[1])}; }

/// A coupling from its same and its cross numbers.
HWY_INLINE Coupling Joined(const Nodes& same, const Nodes& cross) {
  return {{same.u, cross.v}, {cross.u, same.v}};
}
/// The same seen from the neighbour.
HWY_INLINE Coupling Turned(const Nodes& same, const Nodes& cross) {
  return {{same.u, cross.u}, {cross.v, same.v}};
}

/// Full material: opposite neighbours couple alike, and only diagonal ones cross.
struct FullQuads {
  Nodes crossFalling;
  Coupling rising, falling;  ///< towards lower left and upper right, lower right and upper left
  Nodes vertical, horizontal, diagonal;

  explicit FullQuads(const StiffnessPattern& full)
      : crossFalling(Cross(full, kLowerRight)),
        rising(Joined(Same(full, kLowerLeft), Cross(full, kLowerLeft))),
        falling(Joined(Same(full, kLowerLeft), crossFalling)),
        vertical(Same(full, kLower)),
        horizontal(Same(full, kLeft)),
        diagonal(Same(full, kOwn)) {}

 private:
  static Nodes Same(const StiffnessPattern& full, int n) {
    return {Load(full.k[n][0].u), Load(full.k[n][1].v)};
  }
  static Nodes Cross(const StiffnessPattern& full, int n) {
    const Quad cross = Load(full.k[n][1].u);
    return {cross, cross};
  }
};

/// Numbers of the neighbours of a quad's nodes on one side. Before them: [n] is neighbour n. After
/// them: [n] is the neighbour of which the node is neighbour n.
using Side = Nodes[kOwn];

/// Goes on by a wave. `own` are the numbers just computed. `shifted` are the same wave's, one row
/// down or up: for the next quad its lower right neighbours, or backward its upper left ones.
HWY_INLINE void HandOn(Side& side, const Nodes& own, const Nodes& shifted) {
  side[kLowerLeft] = side[kLower];
  side[kLower] = side[kLowerRight];
  side[kLowerRight] = shifted;
  side[kLeft] = own;
}

HWY_INLINE Nodes ForwardFull(const FactorRows& rows, const FullQuads& full, const Side& before,
                             Nodes sum) {
  Subtract(full.rising, before[kLowerLeft], sum);
  sum = sum - Load(rows.lower) * before[kLower];
  Subtract(Joined(Load(rows.lowerRight), full.crossFalling), before[kLowerRight], sum);
  return (sum - Load(rows.left) * before[kLeft]) * Load(rows.inverse);
}

HWY_INLINE Nodes ForwardAny(const FactorRows& rows, const FactorRest& rest, const Side& before,
                            Nodes sum) {
  for (int n = 0; n < kOwn; ++n) {
    Subtract(Joined(Load(Same(rows, rest, n)), Load(rest.cross[n])), before[n], sum);
  }
  const Nodes inverse = Load(rows.inverse);
  const Quad u = sum.u * inverse.u;
  return {u, (sum.v - Load(rest.vWithU) * u) * inverse.v};
}

double Forward(WaveSystem& system, double alpha) {
  const Arrays arrays(system);
  const FullQuads full(system.full);
  const Quad stepSize = All(alpha);
  Nodes squares = Both(0.0);
  Side before = {Both(0.0), Both(0.0), Both(0.0), Both(0.0)};
  for (const Step& at : system.order.Steps()) {
    Nodes z = Both(0.0);
    if (at.own != 0) {
      const std::size_t quad = at.own;
      const Nodes residual = Load(arrays.r[quad]) - Load(arrays.zq[quad]) * stepSize;
      Store(residual, arrays.r[quad]);
      squares = squares + residual * residual;
      const FactorRows& rows = arrays.factor[quad];
      const std::size_t rest = arrays.kinds[quad].rest;
      if (rest == 0) {
        z = ForwardFull(rows, full, before, residual);
      } else {
        z = ForwardAny(rows, arrays.rest[rest], before, residual);
      }
      Store(z, arrays.zq[quad]);
    }
    HandOn(before, z, FromBelow(z, Load(arrays.zq[at.below])));
  }
  return Sum(squares);
}

/// Couplings with the neighbours after each node of the quad of a step, [n] as in Side. These
/// neighbours hold them in their own rows.
struct RowsAfter {
  const Arrays& arrays;
  const Step* at;

  const FactorRest& Rest(std::size_t quad) const { return arrays.rest[arrays.kinds[quad].rest]; }

  HWY_INLINE static Nodes Shifted(int n, const QuadNumbers& own, const QuadNumbers& above) {
    return n == kLeft ? Load(own) : FromAbove(Load(own), Load(above));
  }
  HWY_INLINE Nodes SameOf(int n) const {
    const std::size_t own = at[Waves(n)].own, above = at[Waves(n)].above;
    return Shifted(n, Same(arrays.factor[own], Rest(own), n),
                   Same(arrays.factor[above], Rest(above), n));
  }
  HWY_INLINE Nodes CrossOf(int n) const {
    const std::size_t own = at[Waves(n)].own, above = at[Waves(n)].above;
    return Shifted(n, Rest(own).cross[n], Rest(above).cross[n]);
  }
};

HWY_INLINE Nodes BackwardFull(const RowsAfter& rows, const FullQuads& full, const Side& after,
                              const Nodes& forward, const Nodes& inverse) {
  Nodes sum = rows.SameOf(kLeft) * after[kLeft];
  Add(Joined(rows.SameOf(kLowerRight), full.crossFalling), after[kLowerRight], sum);
  sum = sum + rows.SameOf(kLower) * after[kLower];
  Add(full.rising, after[kLowerLeft], sum);
  return forward - sum * inverse;
}

/// Where v couples with u of a node, u needs the node's v first: the wait doubles.
template <bool kCouplesUV>
HWY_INLINE Nodes BackwardAny(const RowsAfter& rows, const Side& after, const Nodes& forward,
                             const Nodes& inverse) {
  Coupling k[kOwn];
  for (int n = 0; n < kOwn; ++n) k[n] = Turned(rows.SameOf(n), rows.CrossOf(n));
  Nodes sum = Both(0.0);
  for (int n = kLeft; n >= kLowerLeft; --n) {
    sum.v = (sum.v + k[n].u.v * after[n].u) + k[n].v.v * after[n].v;
  }
  const Quad v = forward.v - sum.v * inverse.v;
  if (kCouplesUV) sum.u = Load(rows.Rest(rows.at->own).vWithU) * v;
  for (int n = kLeft; n >= kLowerLeft; --n) {
    sum.u = (sum.u + k[n].u.u * after[n].u) + k[n].v.u * after[n].v;
  }
  return {forward.u - sum.u * inverse.u, v};
}

double Backward(WaveSystem& system) {
  const Arrays arrays(system);
  const FullQuads full(system.full);
  Nodes products = Both(0.0);
  Side after = {Both(0.0), Both(0.0), Both(0.0), Both(0.0)};
  const std::span<const Step> steps = system.order.Steps();
  for (std::size_t k = steps.size(); k-- > 0;) {
    const Step* const at = &steps[k];
    Nodes z = Both(0.0);
    if (at->own != 0) {
      const std::size_t quad = at->own;
      const RowsAfter rows{arrays, at};
      const Nodes forward = Load(arrays.zq[quad]);
      const Nodes inverse = Load(arrays.factor[quad].inverse);
      const QuadKind& kind = arrays.kinds[quad];
      if (kind.isFullBackward) {
        z = BackwardFull(rows, full, after, forward, inverse);
      } else if (!kind.couplesUV) {
        z = BackwardAny<false>(rows, after, forward, inverse);
      } else {
        z = BackwardAny<true>(rows, after, forward, inverse);
      }
      Store(z, arrays.zq[quad]);
      products = products + Load(arrays.r[quad]) * z;
    }
    HandOn(after, z, FromAbove(z, Load(arrays.zq[at->above])));
  }
  return Sum(products);
}

/// A third of a quad's product: what three neighbours in one row of the grid contribute.
HWY_INLINE void AddThird(const StiffnessPattern& pattern, const FullQuads& full, int leftmost,
                         const Nodes (&p)[3], Nodes& sum) {
  if (!pattern.isFull) {
    for (int n = 0; n < 3; ++n) Add(LoadCoupling(pattern.k[leftmost + n]), p[n], sum);
  } else if (leftmost == kLeft) {
    sum = sum + full.horizontal * p[0];
    sum = sum + full.diagonal * p[1];
    sum = sum + full.horizontal * p[2];
  } else {
    const bool isBelow = leftmost == kLowerLeft;
    Add(isBelow ? full.rising : full.falling, p[0], sum);
    sum = sum + full.vertical * p[1];
    Add(isBelow ? full.falling : full.rising, p[2], sum);
  }
}

/// Three waves in a row, the last one just come in.
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

double Direction(WaveSystem& system, double alpha, double beta) {
  const Arrays arrays(system);
  const FullQuads full(system.full);
  const Quad stepSize = All(alpha);
  const Quad kept = All(beta);
  Nodes products = Both(0.0);
  const QuadNumbers* const p = arrays.p;
  ThreeWaves below = {Both(0.0), Both(0.0), Both(0.0)};
  ThreeWaves own = {Both(0.0), Both(0.0), Both(0.0)};
  ThreeWaves above = {Both(0.0), Both(0.0), Both(0.0)};
  Unfinished oneThird{0, nullptr, Both(0.0)}, twoThirds = oneThird;
  const std::span<const WaveOrder::Begin> strips = system.order.Strips();
  std::size_t next = 1;
  for (std::size_t strip = 0; strip + 1 < strips.size(); ++strip) {
    // p is made one strip ahead: the product reads it there. From then on nobody needs z of that
    // strip, and q may take its place.
    const std::size_t end = strips[std::min(strip + 2, strips.size() - 1)].quad;
    for (; next < end; ++next) {
      const Nodes old = Load(p[next]);
      Store(Load(arrays.x[next]) + old * stepSize, arrays.x[next]);
      Store(Load(arrays.zq[next]) + old * kept, arrays.p[next]);
    }
    // A sum over nine neighbours, each added to the one before, makes the processor wait; thirds of
    // three sums at a time do not. At step t the quad of t - 2 gets its upper row and is finished,
    // that of t - 1 its own row, that of t its lower row: `above` then ends at wave t + 1, `own` at
    // t, `below` at t - 1.
    const Step* const steps = system.order.Steps().data();
    for (const Step* at = steps + strips[strip].step; at < steps + strips[strip + 1].step; ++at) {
      TakeIn(above, FromAbove(Load(p[at[1].own]), Load(p[at[1].above])));
      if (twoThirds.quad != 0) {
        AddThird(*twoThirds.pattern, full, kUpperLeft, above, twoThirds.sum);
        // Lanes without an equation got numbers of full material; the factor 0 or 1 clears them.
        if (twoThirds.pattern->isFull) {
          twoThirds.sum = twoThirds.sum * Load(twoThirds.pattern->equation);
        }
        Store(twoThirds.sum, arrays.zq[twoThirds.quad]);
        products = products + own[1] * twoThirds.sum;
      }
      TakeIn(own, Load(p[at->own]));
      twoThirds.quad = oneThird.quad;
      twoThirds.pattern = oneThird.pattern;
      if (oneThird.quad != 0) {
        twoThirds.sum = oneThird.sum;
        AddThird(*oneThird.pattern, full, kLeft, own, twoThirds.sum);
      }
      oneThird.quad = at->own;
      if (oneThird.quad != 0) {
        oneThird.pattern = &arrays.patterns[arrays.kinds[oneThird.quad].pattern];
        oneThird.sum = Both(0.0);
        AddThird(*oneThird.pattern, full, kLowerLeft, below, oneThird.sum);
      }
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
