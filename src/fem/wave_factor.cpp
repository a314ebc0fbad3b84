// Incomplete Cholesky factorization, quad by quad in the order of the waves.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "fem/wave_factor.cpp"
// The order counts: the targets, the loop over them, then what is compiled for each.
// clang-format off
#include "fem/vector_targets.h"
#include "hwy/foreach_target.h"
#include "fem/quad-inl.h"
// clang-format on

#include <cstddef>
#include <vector>

#include "fem/wave_passes.h"

HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// Nodes that stand before both a node and one of its neighbours: what they are to the node, and
/// what to the neighbour. An entry with the neighbour is the stiffness less one product for each
/// component of these nodes and, for the neighbour's v, one for the neighbour's u.
struct Shared {
  int toNode, toNeighbour;
};
constexpr int kSharedCount[kOwn] = {0, 1, 1, 2};
constexpr Shared kShared[kOwn][2] = {
    {},                                            // lower left
    {{kLowerLeft, kLeft}},                         // lower
    {{kLower, kLeft}},                             // lower right
    {{kLowerLeft, kLower}, {kLower, kLowerRight}}  // left
};

/// Rows of one quad while they are computed.
struct Rows {
  Nodes inverse[kOwn];     ///< reciprocal pivots of the neighbours before each node
  Quad entry[kOwn][2][2];  ///< [neighbour][its component][component of the row]
  Quad own;                ///< v with the node's own u
};

/// Finished rows of the neighbours before each node of a quad.
class NeighbourRows {
 public:
  NeighbourRows(const WaveSystem& system, const Surroundings& at)
      : factor_(system.factor.data()), rest_(system.rest.data()), at_(at) {}

  HWY_INLINE Nodes Inverse(int n) const {
    const QuadNumbers& own = factor_[Own(n)].inverse;
    const QuadNumbers& below = factor_[Below(n)].inverse;
    return n == kLeft ? Load(own) : FromBelow(own, below);
  }
  /// Coupling of neighbour n's v with its own u.
  HWY_INLINE Quad OwnOf(int n) const { return Shift(n, rest_[Own(n)].own, rest_[Below(n)].own); }
  /// Coupling of neighbour n's component d with component e of its own neighbour, which is kLower,
  /// kLowerRight or kLeft.
  HWY_INLINE Quad Entry(int n, int d, int neighbour, int e) const {
    return Shift(n, EntryOf(Own(n), d, neighbour, e), EntryOf(Below(n), d, neighbour, e));
  }

 private:
  static std::size_t Waves(int n) { return static_cast<std::size_t>(n == kLeft ? 0 : 2 - n); }
  std::size_t Own(int n) const { return at_.before[Waves(n)]; }
  std::size_t Below(int n) const { return at_.beforeBelow[Waves(n)]; }
  HWY_INLINE static Quad Shift(int n, const LaneNumbers& own, const LaneNumbers& below) {
    return n == kLeft ? Load(own) : FromBelow(own, below);
  }
  const LaneNumbers& EntryOf(std::size_t quad, int d, int neighbour, int e) const {
    const FactorRows& rows = factor_[quad];
    const QuadNumbers& like = neighbour == kLower        ? rows.lower
                              : neighbour == kLowerRight ? rows.lowerRight
                                                         : rows.left;
    const QuadNumbers& entries = d == e ? like : rest_[quad].cross[neighbour];
    return d == 0 ? entries.u : entries.v;
  }

  const FactorRows* factor_;
  const FactorRest* rest_;
  const Surroundings& at_;
};

/// Entry of the rows of component c with component d of neighbour n; those before it are done.
HWY_INLINE Quad Entry(const NeighbourRows& neighbours, const Rows& rows, const Quad& stiffness,
                      int n, int d, int c) {
  Quad entry = stiffness;
  for (int k = 0; k < kSharedCount[n]; ++k) {
    const Shared& shared = kShared[n][k];
    for (int e = 0; e < 2; ++e) {
      entry = entry - (e == 0 ? rows.inverse[shared.toNode].u : rows.inverse[shared.toNode].v) *
                          neighbours.Entry(n, d, shared.toNeighbour, e) *
                          rows.entry[shared.toNode][e][c];
    }
  }
  if (d == 1) entry = entry - rows.inverse[n].u * neighbours.OwnOf(n) * rows.entry[n][0][c];
  // Couplings of exactly zero are no part of the pattern: they do not fill in.
  return WhereNotZero(stiffness, entry);
}

HWY_INLINE void StoreRows(const Rows& done, FactorRows& rows, FactorRest& rest) {
  QuadNumbers* const like[] = {&rest.lowerLeft, &rows.lower, &rows.lowerRight, &rows.left};
  for (int n = 0; n < kOwn; ++n) {
    Store(Nodes{done.entry[n][0][0], done.entry[n][1][1]}, *like[n]);
    Store(Nodes{done.entry[n][1][0], done.entry[n][0][1]}, rest.cross[n]);
  }
  Store(done.own, rest.own);
}

/// Returns 0 where the pivots are finite, else not a number.
HWY_INLINE Quad FactorizeQuad(WaveSystem& system, std::size_t quad, const Quad& tolerance) {
  const StiffnessPattern& pattern = system.patterns[system.patternOf[quad]];
  const NeighbourRows neighbours(system, system.order.Around(quad));
  Rows rows;
  Quad pivotU = Load(pattern.k[kOwn][0].u);
  Quad pivotV = Load(pattern.k[kOwn][1].v);
  rows.own = Load(pattern.k[kOwn][0].v);
  for (int n = 0; n < kOwn; ++n) {
    rows.inverse[n] = neighbours.Inverse(n);
    for (int d = 0; d < 2; ++d) {
      const Nodes stiffness = Load(pattern.k[n][d]);
      const Quad u = Entry(neighbours, rows, stiffness.u, n, d, 0);
      const Quad v = Entry(neighbours, rows, stiffness.v, n, d, 1);
      rows.entry[n][d][0] = u;
      rows.entry[n][d][1] = v;
      const Quad reciprocal = d == 0 ? rows.inverse[n].u : rows.inverse[n].v;
      pivotU = pivotU - u * u * reciprocal;
      pivotV = pivotV - v * v * reciprocal;
      rows.own = rows.own - reciprocal * u * v;
    }
  }
  rows.own = WhereNotZero(Load(pattern.k[kOwn][0].v), rows.own);
  // Without an equation the pivot is 0: replaced, so that the division is finite, and then cleared.
  const Nodes equation = Load(pattern.equation);
  const Quad inverseU = equation.u * (All(1.0) / ReplaceSmall(pivotU, tolerance));
  pivotV = pivotV - rows.own * rows.own * inverseU;
  const Quad inverseV = equation.v * (All(1.0) / ReplaceSmall(pivotV, tolerance));
  StoreRows(rows, system.factor[quad], system.rest[quad]);
  Store(Nodes{inverseU, inverseV}, system.factor[quad].inverse);
  return (pivotU - pivotU) + (pivotV - pivotV);
}

bool FactorizeAll(WaveSystem& system, double tolerance) {
  const Quad least = All(tolerance);
  Quad check = All(0.0);
  for (std::size_t quad = 1; quad <= system.order.Quads(); ++quad) {
    check = check + FactorizeQuad(system, quad, least);
  }
  return Sum(Nodes{check, All(0.0)}) == 0.0;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace quillane {
namespace {
HWY_EXPORT(FactorizeAll);

constexpr unsigned kAllLanes = (1U << kLanes) - 1U;

/// The lanes, a bit each, in which the rest of the rows is that of full material. Rows without an
/// equation may be any: their z is zero.
unsigned FullLanes(const FactorRest& rest, const QuadNumbers& equation, const FullMaterial& full) {
  const double cross[kOwn] = {full.cross, 0.0, -full.cross, 0.0};
  unsigned lanes = 0;
  for (int lane = 0; lane < kLanes; ++lane) {
    bool isFullU = rest.lowerLeft.u.lane[lane] == full.cornerU;
    bool isFullV = rest.lowerLeft.v.lane[lane] == full.cornerV && rest.own.lane[lane] == 0.0;
    for (int n = 0; n < kOwn; ++n) {
      isFullU = isFullU && rest.cross[n].u.lane[lane] == cross[n];
      isFullV = isFullV && rest.cross[n].v.lane[lane] == cross[n];
    }
    const bool hasU = equation.u.lane[lane] != 0.0;
    const bool hasV = equation.v.lane[lane] != 0.0;
    if ((isFullU || !hasU) && (isFullV || !hasV)) lanes |= 1U << lane;
  }
  return lanes;
}

/// True if all rows are full that the backward sweep reads for a quad: its own, the right ones, and
/// of the row above lanes 1 to 3 of its own strip and lane 0 of the strip above.
bool IsFullBackward(const std::vector<unsigned>& fullLanes, std::size_t quad,
                    const Surroundings& at) {
  unsigned full = fullLanes[quad] & fullLanes[at.after[0]];
  for (const QuadIndex other : at.after) full &= fullLanes[other] | 1U;  // lane 0 is not read
  for (const QuadIndex other : at.afterAbove) {
    if ((fullLanes[other] & 1U) == 0) return false;
  }
  return full == kAllLanes;
}

}  // namespace

bool Factorize(WaveSystem& system, double tolerance) {
  if (!HWY_DYNAMIC_DISPATCH(FactorizeAll)(system, tolerance)) return false;
  const std::size_t places = system.rest.size();
  std::vector<unsigned> fullLanes(places);
  for (std::size_t quad = 0; quad < places; ++quad) {
    const StiffnessPattern& pattern = system.patterns[system.patternOf[quad]];
    fullLanes[quad] = FullLanes(system.rest[quad], pattern.equation, system.full);
    system.fullForward[quad] = fullLanes[quad] == kAllLanes;
  }
  for (std::size_t quad = 1; quad < places; ++quad) {
    system.fullBackward[quad] = IsFullBackward(fullLanes, quad, system.order.Around(quad));
  }
  return true;
}

}  // namespace quillane
#endif  // HWY_ONCE
