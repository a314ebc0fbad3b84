// The passes of the grid solver over its vectors, each compiled for every vector length.
#pragma once

#include "fem/grid_system.h"

namespace quillane {

/// Incomplete Cholesky factorization into lower and invDiag. False if a pivot is not finite.
bool FactorizeGrid(GridSystem& system);

/// x = x + alpha p, then p = z + beta p, q = K p.
void DirectionPass(GridSystem& system, double alpha, double beta);

/// r = r - alpha q, then the forward half of z = M^-1 r.
void ForwardPass(GridSystem& system, double alpha);

/// The backward half of z = M^-1 r.
void BackwardPass(GridSystem& system);

/// The sum of p(i) q(i) over all equations, added one by one in ascending order. To follow
/// DirectionPass.
double DirectionTimesProduct(const GridSystem& system);

/// The sums of r(i) r(i) and of r(i) z(i), likewise. To follow ForwardPass and BackwardPass.
struct ResidualSums {
  double squared, preconditioned;
};
ResidualSums SumResiduals(const GridSystem& system);

}  // namespace quillane
