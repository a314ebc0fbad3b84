// The same iteration as PreconditionedCG, pass by pass over the quads.
#include "fem/wave_solver.h"

#include <cmath>
#include <new>
#include <numeric>

#include "fem/wave_passes.h"
#include "model/run_time_error.h"

namespace quillane {

std::optional<SolveReport> SolveOnWaves(Model& model, double tolerance) try {
  const int equations = model.EquationCount;
  const auto load = model.LoadVector.Raw().subspan(1, static_cast<std::size_t>(equations));
  const double loadSquared = std::inner_product(load.begin(), load.end(), load.begin(), 0.0);
  if (!std::isfinite(loadSquared)) return std::nullopt;
  std::optional<WaveSystem> system = LayOutWaves(model);
  if (!system || !Factorize(*system, tolerance)) return std::nullopt;

  SolveReport report{.equations = equations};
  double alpha = 0.0;
  double beta = 0.0;
  ForwardPass(*system, alpha);  // with alpha 0: r stays the load
  double rho = BackwardPass(*system, alpha);
  while (report.iterations < equations + 10) {
    const double curvature = DirectionPass(*system, beta);
    alpha = rho / curvature;
    const double ratio = ForwardPass(*system, alpha) / loadSquared;
    if (!std::isfinite(curvature) || !std::isfinite(alpha) || !std::isfinite(ratio)) {
      return std::nullopt;
    }
    ++report.iterations;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= tolerance * tolerance;
    if (report.converged) break;
    const double rhoNext = BackwardPass(*system, alpha);
    beta = rhoNext / rho;
    rho = rhoNext;
    if (!std::isfinite(rho) || !std::isfinite(beta)) return std::nullopt;
  }

  // The backward pass updates x. After convergence there is none: the last update is done here.
  const double lastAlpha = report.converged ? alpha : 0.0;
  const auto solution = model.SolutionVector.Raw();
  system->ForEachEquation(system->x, [&](int equation, double& number) {
    solution[static_cast<std::size_t>(equation)] = number;
  });
  system->ForEachEquation(system->p, [&](int equation, double& number) {
    solution[static_cast<std::size_t>(equation)] += lastAlpha * number;
  });
  return report;
} catch (const std::bad_alloc&) {
  throw RunTimeError(ErrorKind::kOutOfMemory, "no memory for the equation system");
}

}  // namespace quillane
