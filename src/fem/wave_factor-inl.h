// Incomplete Cholesky factorization, quad by quad in the order of the steps. Included once per
// instruction set, after the arithmetic on quads.
HWY_BEFORE_NAMESPACE();
namespace quillane {
namespace HWY_NAMESPACE {
namespace {

/// A node before both a node and its neighbour n: which neighbour of the node it is, and which of
/// n. Each of its components subtracts one product from every coupling with n; n's own u subtracts
/// one more from those with n's v.
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
  Nodes inverse[kOwn];      ///< reciprocal pivots of the neighbours before each node
  Coupling coupling[kOwn];  ///< [neighbour]
};

/// Finished rows of the neighbours before each node of the quad of a step.
struct NeighbourRows {
  const WaveSystem& system;
  const Step* at;

  std::size_t QuadOf(int n) const { return at[-WavesBefore(n)].own; }
  std::size_t QuadBelow(int n) const { return at[-WavesBefore(n)].below; }
  const FactorRest& Rest(std::size_t quad) const { return system.rests[system.kinds[quad].rest]; }

  HWY_INLINE static Nodes Shifted(int n, const QuadNumbers& own, const QuadNumbers& below) {
    return n == kLeft ? Load(own) : FromBelow(Load(own), Load(below));
  }
  HWY_INLINE Nodes Inverse(int n) const {
    return Shifted(n, system.factor[QuadOf(n)].inverse, system.factor[QuadBelow(n)].inverse);
  }
  /// Returns the coupling of neighbour n's v with its own u.
  HWY_INLINE Lanes VWithU(int n) const {
    const Lanes there = Load(Rest(QuadOf(n)).vWithU);
    return n == kLeft ? there : Window<3>(Load(Rest(QuadBelow(n)).vWithU), there);
  }
  /// Returns the couplings of neighbour n with its own neighbour.
  HWY_INLINE Nodes SameOf(int n, int neighbour) const {
    return Shifted(n, Same(system.factor[QuadOf(n)], Rest(QuadOf(n)), neighbour),
                   Same(system.factor[QuadBelow(n)], Rest(QuadBelow(n)), neighbour));
  }
  HWY_INLINE Nodes CrossOf(int n, int neighbour) const {
    return Shifted(n, Rest(QuadOf(n)).cross[neighbour], Rest(QuadBelow(n)).cross[neighbour]);
  }
};

/// Computes the couplings with neighbour n; those with the neighbours before n are known.
HWY_INLINE void ComputeCouplings(const NeighbourRows& neighbours, int n, const Coupling& stiffness,
                                 Rows& rows) {
  Coupling coupling = stiffness;
  for (int k = 0; k < kSharedCount[n]; ++k) {
    const Shared& shared = kShared[n][k];
    const Nodes& inverse = rows.inverse[shared.toNode];
    const Coupling& known = rows.coupling[shared.toNode];
    const Nodes same = neighbours.SameOf(n, shared.toNeighbour);
    const Nodes cross = neighbours.CrossOf(n, shared.toNeighbour);
    coupling.u = coupling.u - known.u * (inverse.u * same.u) - known.v * (inverse.v * cross.u);
    coupling.v = coupling.v - known.u * (inverse.u * cross.v) - known.v * (inverse.v * same.v);
  }
  // An exactly zero stiffness is not in the pattern: its factor is zero, too.
  coupling.u = Where(stiffness.u, coupling.u, Both(0.0));
  coupling.v = coupling.v - coupling.u * (rows.inverse[n].u * neighbours.VWithU(n));
  coupling.v = Where(stiffness.v, coupling.v, Both(0.0));
  rows.coupling[n] = coupling;
}

/// Stores the rows of a quad and sets in its kind which shortcuts they allow.
HWY_INLINE void Keep(WaveSystem& system, std::size_t quad, const Rows& rows, const Nodes& inverse,
                     const Lanes& vWithU, const Nodes& equation) {
  FactorRows& factor = system.factor[quad];
  const FactorRest& full = system.rests[0];
  FactorRest rest = full;
  Store(inverse, factor.inverse);
  Store(vWithU, rest.vWithU);
  for (int n = 0; n < kOwn; ++n) {
    const Nodes same = {rows.coupling[n].u.u, rows.coupling[n].v.v};
    const Nodes cross = {rows.coupling[n].v.u, rows.coupling[n].u.v};
    const bool isRest = n == kLowerLeft;
    Store(isRest ? Where(equation, same, Load(full.lowerLeft)) : same, Same(factor, rest, n));
    Store(Where(equation, cross, Load(full.cross[n])), rest.cross[n]);
  }
  QuadKind& kind = system.kinds[quad];
  kind.couplesUV = rest.vWithU != full.vWithU;
  kind.rest = 0;
  if (rest == full) return;
  kind.rest = static_cast<QuadIndex>(system.rests.size());
  system.rests.push_back(rest);
}

/// Factorizes the quad of a step. Returns 0 if the pivots are finite, else not a number.
HWY_INLINE Nodes FactorizeQuad(WaveSystem& system, const Step* at, const Lanes& tolerance) {
  const StiffnessPattern& pattern = system.patterns[system.kinds[at->own].pattern];
  const NeighbourRows neighbours{system, at};
  Rows rows;
  const Nodes ownU = Load(pattern.k[kOwn][0]);
  Nodes pivot = {ownU.u, Load(pattern.k[kOwn][1].v)};
  Lanes vWithU = ownU.v;
  for (int n = 0; n < kOwn; ++n) {
    rows.inverse[n] = neighbours.Inverse(n);
    ComputeCouplings(neighbours, n, Load(pattern.k[n]), rows);
    const Coupling& coupling = rows.coupling[n];
    const Nodes& inverse = rows.inverse[n];
    pivot = pivot - coupling.u * coupling.u * inverse.u - coupling.v * coupling.v * inverse.v;
    vWithU =
        vWithU - inverse.u * coupling.u.u * coupling.u.v - inverse.v * coupling.v.u * coupling.v.v;
  }
  vWithU = Where(ownU.v, vWithU, All(0.0));
  // Without an equation the pivot is 0: it is replaced to keep the division finite, and the
  // quotient cleared.
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
