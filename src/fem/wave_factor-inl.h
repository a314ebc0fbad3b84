// Incomplete Cholesky factorization, quad by quad in the order of the steps. Included once per
// instruction set, after the arithmetic on quads.
HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// A node that stands before both a node and a neighbour n of it: what it is to the node, and what
/// to the neighbour. Each of its components takes one product from the entries with n. From those
/// with n's v, n's own u takes one more.
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
  Nodes inverse[kOwn];   ///< reciprocal pivots of the neighbours before each node
  Coupling entry[kOwn];  ///< [neighbour]
};

/// Finished rows of the neighbours before each node of the quad of a step.
struct NeighbourRows {
  const WaveSystem& system;
  const Step* at;

  std::size_t QuadOf(int n) const { return at[-Waves(n)].own; }
  std::size_t QuadBelow(int n) const { return at[-Waves(n)].below; }
  const FactorRest& Rest(std::size_t quad) const { return system.rest[system.kinds[quad].rest]; }

  HWY_INLINE static Nodes Shifted(int n, const QuadNumbers& own, const QuadNumbers& below) {
    return n == kLeft ? Load(own) : FromBelow(Load(own), Load(below));
  }
  HWY_INLINE Nodes Inverse(int n) const {
    return Shifted(n, system.factor[QuadOf(n)].inverse, system.factor[QuadBelow(n)].inverse);
  }
  /// Coupling of neighbour n's v with its own u.
  HWY_INLINE Lanes VWithU(int n) const {
    const Lanes there = Load(Rest(QuadOf(n)).vWithU);
    return n == kLeft ? there : Window<3>(Load(Rest(QuadBelow(n)).vWithU), there);
  }
  /// Couplings of neighbour n with its own neighbour.
  HWY_INLINE Nodes SameOf(int n, int neighbour) const {
    return Shifted(n, Same(system.factor[QuadOf(n)], Rest(QuadOf(n)), neighbour),
                   Same(system.factor[QuadBelow(n)], Rest(QuadBelow(n)), neighbour));
  }
  HWY_INLINE Nodes CrossOf(int n, int neighbour) const {
    return Shifted(n, Rest(QuadOf(n)).cross[neighbour], Rest(QuadBelow(n)).cross[neighbour]);
  }
};

/// Entries with neighbour n; those with the neighbours before n are done.
HWY_INLINE void ComputeEntries(const NeighbourRows& neighbours, int n, const Coupling& stiffness,
                               Rows& rows) {
  Coupling entry = stiffness;
  for (int k = 0; k < kSharedCount[n]; ++k) {
    const Shared& shared = kShared[n][k];
    const Nodes& inverse = rows.inverse[shared.toNode];
    const Coupling& known = rows.entry[shared.toNode];
    const Nodes same = neighbours.SameOf(n, shared.toNeighbour);
    const Nodes cross = neighbours.CrossOf(n, shared.toNeighbour);
    entry.u = entry.u - known.u * (inverse.u * same.u) - known.v * (inverse.v * cross.u);
    entry.v = entry.v - known.u * (inverse.u * cross.v) - known.v * (inverse.v * same.v);
  }
  // Where the stiffness is exactly zero the factor is zero, too.
  entry.u = Where(stiffness.u, entry.u, Both(0.0));
  entry.v = entry.v - entry.u * (rows.inverse[n].u * neighbours.VWithU(n));
  entry.v = Where(stiffness.v, entry.v, Both(0.0));
  rows.entry[n] = entry;
}

/// Stores the rows of a quad and notes in its kind which short ways they allow.
HWY_INLINE void Keep(WaveSystem& system, std::size_t quad, const Rows& rows, const Nodes& inverse,
                     const Lanes& vWithU, const Nodes& equation) {
  FactorRows& factor = system.factor[quad];
  const FactorRest& full = system.rest[0];
  FactorRest rest;
  Store(inverse, factor.inverse);
  Store(vWithU, rest.vWithU);
  for (int n = 0; n < kOwn; ++n) {
    const Nodes same = {rows.entry[n].u.u, rows.entry[n].v.v};
    const Nodes cross = {rows.entry[n].v.u, rows.entry[n].u.v};
    Store(same, Same(factor, rest, n));
    Store(Where(equation, cross, Load(full.cross[n])), rest.cross[n]);
  }
  Store(Where(equation, Load(rest.lowerLeft), Load(full.lowerLeft)), rest.lowerLeft);
  QuadKind& kind = system.kinds[quad];
  kind.couplesUV = rest.vWithU != full.vWithU;
  kind.rest = 0;
  if (rest == full) return;
  kind.rest = static_cast<QuadIndex>(system.rest.size());
  system.rest.push_back(rest);
}

/// Factorizes the quad of a step. Returns 0 where the pivots are finite, else not a number.
HWY_INLINE Nodes FactorizeQuad(WaveSystem& system, const Step* at, const Lanes& tolerance) {
  const StiffnessPattern& pattern = system.patterns[system.kinds[at->own].pattern];
  const NeighbourRows neighbours{system, at};
  Rows rows;
  const Nodes ownU = Load(pattern.k[kOwn][0]);
  Nodes pivot = {ownU.u, Load(pattern.k[kOwn][1].v)};
  Lanes vWithU = ownU.v;
  for (int n = 0; n < kOwn; ++n) {
    rows.inverse[n] = neighbours.Inverse(n);
    ComputeEntries(neighbours, n, Load(pattern.k[n]), rows);
    const Coupling& entry = rows.entry[n];
    const Nodes& inverse = rows.inverse[n];
    pivot = pivot - entry.u * entry.u * inverse.u - entry.v * entry.v * inverse.v;
    vWithU = vWithU - inverse.u * entry.u.u * entry.u.v - inverse.v * entry.v.u * entry.v.v;
  }
  vWithU = Where(ownU.v, vWithU, All(0.0));
  // Without an equation the pivot is 0: replaced, so that the division is finite, and then cleared.
  const Nodes equation = Load(pattern.equation);
  Nodes inverse;
  inverse.u = equation.u * (All(1.0) / ReplaceSmall(pivot.u, tolerance));
  pivot.v = pivot.v - vWithU * vWithU * inverse.u;
  inverse.v = equation.v * (All(1.0) / ReplaceSmall(pivot.v, tolerance));
  Keep(system, at->own, rows, inverse, vWithU, equation);
  return pivot * All(0.0);
}

bool FactorizeAll(WaveSystem& system, double tolerance) {
  const Lanes least = All(tolerance);
  Nodes check = Both(0.0);
  for (const Step& step : system.order.Steps()) {
    if (step.own != 0) check = check + FactorizeQuad(system, &step, least);
  }
  return Sum(check) == 0.0;
}

}  // namespace
}  // namespace HWY_NAMESPACE
}  // namespace quillane
HWY_AFTER_NAMESPACE();
