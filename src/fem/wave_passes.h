// The factorization and the two passes of the fast solver over its vectors. Each pass returns sums
// over all equations in an order that is the same on every processor: per lane and component, quad
// by quad in the order of the pass; then u plus v; then over the lanes.
#pragma once

#include "fem/wave_system.h"

namespace quillane {

/// Computes the factorization of IncompleteCholesky into factor, rests and kinds of the system.
/// Replaces a pivot of magnitude at most `tolerance` (> 0) by it. Returns false if a pivot is not
/// finite.
bool Factorize(WaveSystem& system, double tolerance);

/// Sums over all equations.
struct ForwardSums {
  double rr, rz;
};

/// Computes x = x + alpha p, r = r - alpha q and the forward sweep of z = M^-1 r, y = (D + L)^-1 r,
/// which replaces q. The sum of r z follows from y alone: with M = (D + L) D^-1 (D + L)^T it equals
/// that of y D y.
ForwardSums ForwardPass(WaveSystem& system, double alpha);

/// Computes the backward sweep from y to z, p = z + beta p and q = K p. Returns the sum of p q.
double BackwardPass(WaveSystem& system, double beta);

}  // namespace quillane
