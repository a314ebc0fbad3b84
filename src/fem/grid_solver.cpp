// The same iteration as PreconditionedCG, pass by pass over the skewed grid.
#include "fem/grid_solver.h"

#include <cmath>

#include "fem/assembly.h"
#include "fem/grid_kernels.h"

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
