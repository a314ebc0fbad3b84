// Sweeps and product, step by step; the factorization is compiled here, too.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/wave_passes.cpp"
// The order counts: the loop over the instruction sets, then what is compiled for each.
// clang-format off
#include "hwy/foreach_target.h"
#include "fem/quad-inl.h"
#include "fem/wave_factor-inl.h"
// clang-format on

#include "fem/wave_passes.h"

#include <cstddef>
#include <span>

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// Returns the sums of the forward sweep for the nodes of a quad: `sum`, their r, minus the
/// contributions of the y of the neighbours before them.
template <bool kOnlyCornersCross>
HWY_INLINE Nodes ForwardSum(const FactorRows& rows, const FactorRest& rest, const Nodes (&y)[kOwn],
                            Nodes sum) {
  for (int n = 0; n < kOwn; ++n) {
    const Nodes same = Load(Same(rows, rest, n));
    if (kOnlyCornersCross && !IsCorner(n)) {
      sum = sum - same * y[n];
    } else {
      const Nodes cross = Load(rest.cross[n]);
      sum = sum - Nodes{same.u, cross.v} * y[n].u - Nodes{cross.u, same.v} * y[n].v;
    }
  }
  return sum;
}

ForwardSums Forward(WaveSystem& system, double alpha) {
  // Local pointers: the compiler would reload those in the vectors after every store.
  const QuadKind* const kinds = system.kinds.data();
  const FactorRows* const factor = system.factor.data();
  const FactorRest* const rests = system.rests.data();
  QuadNumbers* const x = system.x.data();
  const QuadNumbers* const p = system.p.data();
  QuadNumbers* const r = system.r.data();
  QuadNumbers* const yq = system.yq.data();
  const Lanes alphas = All(alpha);
  Nodes rr = Both(0.0);
  Nodes rz = Both(0.0);
  Nodes before[kOwn] = {rr, rr, rr, rr};  // y of the neighbours
  for (const Step& at : system.order.Steps()) {
    Nodes y = Both(0.0);
    if (at.own != 0) {
      const std::size_t quad = at.own;
      const Nodes residual = Load(r[quad]) - Load(yq[quad]) * alphas;
      Store(residual, r[quad]);
      Store(Load(x[quad]) + Load(p[quad]) * alphas, x[quad]);
      rr = rr + residual * residual;
      const FactorRows& rows = factor[quad];
      const QuadKind& kind = kinds[quad];
      const FactorRest& rest = rests[kind.rest];
      Nodes sum = kind.rest == 0 ? ForwardSum<true>(rows, rest, before, residual)
                                 : ForwardSum<false>(rows, rest, before, residual);
      y.u = sum.u * Load(rows.inverse.u);
      if (kind.couplesUV) sum.v = sum.v - Load(rest.vWithU) * y.u;
      y.v = sum.v * Load(rows.inverse.v);
      rz = rz + sum * y;
      Store(y, yq[quad]);
    }
    before[kLowerLeft] = before[kLower];
    before[kLower] = before[kLowerRight];
    before[kLowerRight] = FromBelow(y, Load(yq[at.below]));
    before[kLeft] = y;
  }
  return {Sum(rr), Sum(rz)};
}

/// The contribution of a quad's z to the sums of a neighbour of each node.
struct Given {
  Nodes byV, byU;
};
HWY_INLINE Given Give(const QuadNumbers& same, const QuadNumbers& cross, const Nodes& z) {
  return {Nodes{Load(cross.v), Load(same.v)} * z.v, Nodes{Load(same.u), Load(cross.u)} * z.u};
}
HWY_INLINE Nodes operator+(const Nodes& sum, const Given& given) {
  return sum + given.byV + given.byU;
}

/// The backward sweep, from y to z, and p = z + beta p; from the last step to the first.
class BackwardSweep {
 public:
  HWY_INLINE BackwardSweep(WaveSystem& system, double beta) : system_(system), beta_(All(beta)) {}

  HWY_INLINE void Take(const Step& at) {
    const Nodes given = sums_[0];
    toLane3_[at.below] = {Lane0(given.u), Lane0(given.v)};
    sums_[0] = sums_[1];
    sums_[1] = sums_[2];
    sums_[2] = zero_;
    if (at.own == 0) {
      toLeft_ = {zero_, zero_};
      return;
    }
    const std::size_t quad = at.own;
    const FactorRows& rows = factor_[quad];
    const QuadKind& kind = kinds_[quad];
    const FactorRest& rest = rests_[kind.rest];
    Nodes sum = FromAbove(given, {All(toLane3_[quad].u), All(toLane3_[quad].v)}) + toLeft_;
    const Nodes inverse = Load(rows.inverse);
    Nodes z = Load(yq_[quad]);
    z.v = z.v - sum.v * inverse.v;
    if (kind.couplesUV) sum.u = sum.u + Load(rest.vWithU) * z.v;
    z.u = z.u - sum.u * inverse.u;
    const Nodes p = Load(p_[quad]);
    Store(z + p * beta_, p_[quad]);
    sums_[0] = sums_[0] + Give(rows.lowerRight, rest.cross[kLowerRight], z);
    sums_[1] = sums_[1] + Give(rows.lower, rest.cross[kLower], z);
    sums_[2] = sums_[2] + Give(rest.lowerLeft, rest.cross[kLowerLeft], z);
    toLeft_ = Give(rows.left, rest.cross[kLeft], z);
  }

 private:
  WaveSystem& system_;
  const QuadKind* const kinds_ = system_.kinds.data();
  const FactorRows* const factor_ = system_.factor.data();
  const FactorRest* const rests_ = system_.rests.data();
  NodeNumbers* const toLane3_ = system_.toLane3.data();
  const QuadNumbers* const yq_ = system_.yq.data();
  QuadNumbers* const p_ = system_.p.data();
  const Lanes beta_;
  const Nodes zero_ = Both(0.0);
  // A node's couplings with later neighbours are in their rows: a later quad adds its contribution
  // as soon as its z is known. Before a step sums_[i] holds the contributions of the row above to
  // the nodes i waves before it, still in the lanes of the contributing nodes.
  Nodes sums_[WaveOrder::kReach] = {zero_, zero_, zero_};
  Given toLeft_ = {zero_, zero_};
};

/// p of a node's left neighbour, its own and that of its right neighbour; or of the three below or
/// above. These are three successive waves.
using ThreeWaves = Nodes[3];

/// Adds the contributions of three neighbours in one row of the grid to the product.
template <bool kOnlyCornersCross>
HWY_INLINE void AddRow(const StiffnessPattern& pattern, int leftmost, const ThreeWaves& p,
                       Nodes& sum) {
  for (int i = 0; i < 3; ++i) {
    const Coupling k = Load(pattern.k[leftmost + i]);
    if (kOnlyCornersCross && !IsCorner(leftmost + i)) {
      sum = sum + Nodes{k.u.u, k.v.v} * p[i];
    } else {
      sum = sum + k.u * p[i].u + k.v * p[i].v;
    }
  }
}

/// The product q = K p, from the last step to the first.
class Product {
 public:
  HWY_INLINE explicit Product(WaveSystem& system) : system_(system) {}

  /// `at` is none of the first kReach steps and not the last one.
  HWY_INLINE void Take(const Step* at) {
    TakeIn(below_,
           FromBelow(Load(p_[at[-WaveOrder::kReach].own]), Load(p_[at[-WaveOrder::kReach].below])));
    TakeIn(own_, Load(p_[at[-1].own]));
    TakeIn(above_, FromAbove(Load(p_[at[1].own]), Load(p_[at[1].above])));
    if (at->own == 0) return;
    const StiffnessPattern& pattern = patterns_[kinds_[at->own].pattern];
    const Nodes q = pattern.onlyCornersCross ? Compute<true>(pattern) : Compute<false>(pattern);
    Store(q, yq_[at->own]);
    pq_ = pq_ + own_[1] * q;
  }

  double SumOfPQ() const { return Sum(pq_); }

 private:
  HWY_INLINE static void TakeIn(ThreeWaves& waves, const Nodes& next) {
    waves[2] = waves[1];
    waves[1] = waves[0];
    waves[0] = next;
  }
  template <bool kOnlyCornersCross>
  HWY_INLINE Nodes Compute(const StiffnessPattern& pattern) const {
    Nodes sum = Both(0.0);
    AddRow<kOnlyCornersCross>(pattern, kLowerLeft, below_, sum);
    AddRow<kOnlyCornersCross>(pattern, kLeft, own_, sum);
    AddRow<kOnlyCornersCross>(pattern, kUpperLeft, above_, sum);
    return sum;
  }

  WaveSystem& system_;
  const QuadKind* const kinds_ = system_.kinds.data();
  const StiffnessPattern* const patterns_ = system_.patterns.data();
  const QuadNumbers* const p_ = system_.p.data();
  QuadNumbers* const yq_ = system_.yq.data();
  Nodes pq_ = Both(0.0);
  ThreeWaves below_ = {pq_, pq_, pq_}, own_ = {pq_, pq_, pq_}, above_ = {pq_, pq_, pq_};
};

double Backward(WaveSystem& system, double beta) {
  BackwardSweep sweep(system, beta);
  Product product(system);
  // A step of the sweep depends on the one before, a step of the product does not: interleaved, the
  // processor overlaps them. Distance() steps behind the sweep, the product reads only updated p.
  const std::span<const Step> steps = system.order.Steps();
  const std::size_t lag = system.order.Distance();
  for (std::size_t k = steps.size() + lag; k-- > WaveOrder::kReach;) {
    if (k >= lag) sweep.Take(steps[k - lag]);
    if (k + 1 < steps.size()) product.Take(&steps[k]);
  }
  return product.SumOfPQ();
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(FactorizeAll);
HWY_EXPORT(Forward);
HWY_EXPORT(Backward);
}  // namespace

bool Factorize(WaveSystem& system, double tolerance) {
  system.rests.resize(1);
  return HWY_DYNAMIC_DISPATCH(FactorizeAll)(system, tolerance);
}
ForwardSums ForwardPass(WaveSystem& system, double alpha) {
  return HWY_DYNAMIC_DISPATCH(Forward)(system, alpha);
}
double BackwardPass(WaveSystem& system, double beta) {
  return HWY_DYNAMIC_DISPATCH(Backward)(system, beta);
}

}  // namespace quillane
#endif  // HWY_ONCE
