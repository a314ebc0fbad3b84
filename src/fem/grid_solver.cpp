// The same iteration as PreconditionedCG, pass by pass over the skewed grid.
#include "fem/grid_solver.h"

#include <cmath>

#include "fem/assembly.h"
#include "fem/grid_kernels.h"

namespace quillane {
namespace {

ConstNodeNumbers Const(const NodeNumbers& numbers) { return {numbers[0], numbers[1]}; }

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
  double rho = OrderedSum(system, Const(system.r), Const(system.z));
  double alpha = 0.0;
  double beta = 0.0;
  if (!std::isfinite(rho) || !std::isfinite(loadSquared)) return std::nullopt;
  for (int iteration = 1; iteration <= equations + 10; ++iteration) {
    DirectionPass(system, alpha, beta);
    const double curvature = OrderedSum(system, Const(system.p), Const(system.q));
    alpha = rho / curvature;
    if (!std::isfinite(curvature) || !std::isfinite(alpha)) return std::nullopt;
    ForwardPass(system, alpha);
    const double residualSquared = OrderedSum(system, Const(system.r), Const(system.r));
    const double ratio = residualSquared / loadSquared;
    if (!std::isfinite(ratio)) return std::nullopt;
    report.iterations = iteration;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= bound;
    if (report.converged) break;
    BackwardPass(system);
    const double rhoNext = OrderedSum(system, Const(system.r), Const(system.z));
    beta = rhoNext / rho;
    rho = rhoNext;
    if (!std::isfinite(rhoNext) || !std::isfinite(beta)) return std::nullopt;
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
