// The factorization and the two passes of the fast solver over its vectors. Each pass returns sums
// over all equations, the same on every processor: first per lane and component, quad after quad in
// the order of the pass; then u plus v; then over the lanes.
#pragma once

#include "fem/wave_system.h"

namespace quillane {

/// Incomplete Cholesky factorization, as IncompleteCholesky computes it, into factor, rest and
/// kinds of the system. A pivot of at most `tolerance` (> 0) in size is replaced by it. False if a
/// pivot is not finite.
bool Factorize(WaveSystem& system, double tolerance);

/// Sums over all equations.
struct ForwardSums {
  double rr, rz;
};

/// x = x + alpha p, r = r - alpha q, and the forward sweep of z = M^-1 r: y = (D + L)^-1 r, in the
/// place of q. The sum of r z needs no more: M = (D + L) D^-1 (D + L)^T, so it is that of y D y.
ForwardSums ForwardPass(WaveSystem& system, double alpha);

/// The backward sweep, from y to z; p = z + beta p, q = K p. Returns the sum of p q.
double BackwardPass(WaveSystem& system, double beta);

}  // namespace quillane
