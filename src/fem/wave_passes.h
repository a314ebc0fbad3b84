// The passes of the fast solver over its vectors. Each returns a sum over all equations, which does
// not depend on the processor: lane by lane in the order of the pass, then the lanes.
#pragma once

#include "fem/wave_system.h"

namespace quillane {

/// Incomplete Cholesky factorization into system.factor, as IncompleteCholesky computes it. False
/// if a pivot is not finite.
bool Factorize(WaveSystem& system, double tolerance);

/// x = x + alpha p, then p = z + beta p, q = K p. Returns the sum of p q.
double DirectionPass(WaveSystem& system, double alpha, double beta);

/// r = r - alpha q, then the forward half of z = M^-1 r. Returns the sum of r r.
double ForwardPass(WaveSystem& system, double alpha);

/// The backward half of z = M^-1 r. Returns the sum of r z.
double BackwardPass(WaveSystem& system);

}  // namespace quillane
