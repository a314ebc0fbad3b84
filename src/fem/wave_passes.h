// The factorization and the three passes of the fast solver over its vectors. Each pass returns a
// sum over all equations, the same on every processor: first per lane and component, quad after
// quad in the order of the pass; then u plus v; then over the lanes.
#pragma once

#include "fem/wave_system.h"

namespace quillane {

/// Incomplete Cholesky factorization, as IncompleteCholesky computes it, into factor, rest and
/// kinds of the system. A pivot of at most `tolerance` (> 0) in size is replaced by it. False if a
/// pivot is not finite.
bool Factorize(WaveSystem& system, double tolerance);

/// p = z + beta p, q = K p. Returns the sum of p q.
double DirectionPass(WaveSystem& system, double beta);

/// r = r - alpha q, then the forward half of z = M^-1 r, which takes the place of q. Returns the
/// sum of r r.
double ForwardPass(WaveSystem& system, double alpha);

/// x = x + alpha p, and the backward half of z = M^-1 r. Returns the sum of r z.
double BackwardPass(WaveSystem& system, double alpha);

}  // namespace quillane
