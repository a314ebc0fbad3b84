// The same iteration as PreconditionedCG, pass by pass over the skewed grid.
#include "fem/grid_solver.h"

#include <cmath>

#include "fem/assembly.h"
#include "fem/grid_kernels.h"

// Why the bits are those of the plain procedures.
//
// Order. Every number is computed from the same operands by the same operations in the same order;
// only independent numbers are computed side by side. In a triangular solve a node needs the nodes
// to its left and below, so grid rows can advance together as long as each stays two nodes behind
// the row below: kGridLanes rows run in the lanes of vectors, every row a few slots after the one
// below (SkewedGrid). Products and sums are rounded one by one, never fused. The sums over all
// equations, one long chain of additions each, are the exception: Sums in ordered_sum.cpp proves
// piece by piece that the chain's result can be had without the chain, and follows it where the
// proof fails.
//
// Padding. Each node has a place for both components and all 18 couplings, though the row store
// leaves out what has no equation or is exactly zero. Components without equation have a reciprocal
// pivot of 0, so z, and with it r, p and q, stay 0 there. The surplus terms are therefore products
// with a factor of zero. Adding one leaves a sum as it is, but for the sign of a zero: x - (+0) and
// x + (-0) are x, and only a zero sum may turn from -0 to +0 or back. Signs of zeros die out: a sum
// over equations starts at +0 and never becomes -0, nor does x; no number is divided by or compared
// beyond its value; so they reach neither x nor the report. Couplings that are exactly zero must
// not fill in during the factorization: there the stiffness itself is the mask.
//
// Not-finite numbers would spread from surplus terms (0 times infinity) where the row store has
// none. But if any number of a vector is not finite, the next sum over it is not, and every pivot
// is checked: then nothing computed here counts, and the plain procedures decide from the start.
//
// Ordinary nodes. Between four present cells the stiffness couples u with v only towards the
// diagonal neighbours, with the same numbers at every node: a table of one row replaces the matrix
// in the product. For the same reason six of a factor's seventeen entries are the stiffness itself
// and five are zero: an entry changes only through columns that its row shares with the
// neighbour's. Which rows are so is not deduced from the layout but read off the computed factor,
// vector by vector (ordinaryForward, ordinaryBackward); the sweeps then read eight numbers per node
// instead of 19. Other nodes go through the general forms.
//
// Two liberties with the order of whole steps. The last direction is added to x at the start of the
// next iteration, or at the end. The stop is tested after the preconditioner instead of before it;
// what it computes then goes unused, unless not finite, which again leaves it to the plain form.
namespace quillane {
namespace {

double SquaredLoad(const Model& model) {
  double sum = 0.0;
  for (const double force : model.LoadVector.Raw().subspan(1)) sum += force * force;
  return sum;
}

/// The iteration; empty as soon as a number is not finite.
std::optional<SolveReport> Iterate(GridSystem& system, Model& model) {
  const int equations = model.EquationCount;
  const double loadSquared = SquaredLoad(model);
  SolveReport report{.equations = equations};
  const double bound = system.tolerance * system.tolerance;
  ForwardPass(system, 0.0);
  BackwardPass(system);
  double rho = SumResiduals(system).preconditioned;
  double alpha = 0.0;
  double beta = 0.0;
  if (!std::isfinite(rho) || !std::isfinite(loadSquared)) return std::nullopt;
  for (int iteration = 1; iteration <= equations + 10; ++iteration) {
    DirectionPass(system, alpha, beta);
    const double curvature = DirectionTimesProduct(system);
    alpha = rho / curvature;
    if (!std::isfinite(curvature) || !std::isfinite(alpha)) return std::nullopt;
    ForwardPass(system, alpha);
    BackwardPass(system);
    const ResidualSums sums = SumResiduals(system);
    const double ratio = sums.squared / loadSquared;
    if (!std::isfinite(ratio)) return std::nullopt;
    report.iterations = iteration;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= bound;
    if (report.converged) break;
    beta = sums.preconditioned / rho;
    rho = sums.preconditioned;
    if (!std::isfinite(rho) || !std::isfinite(beta)) return std::nullopt;
  }
  TakeSolution(system, alpha, model);
  return report;
}

}  // namespace

std::optional<SolveReport> SolveOnGrid(Model& model, double tolerance) {
  AssembleLoads(model);
  std::optional<GridSystem> system = LayOutGrid(model, tolerance);
  if (!system || !FactorizeGrid(*system)) return std::nullopt;
  return Iterate(*system, model);
}

}  // namespace quillane
