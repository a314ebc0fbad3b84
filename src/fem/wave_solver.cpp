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
  double beta = 0.0;
  double rho = ForwardPass(*system, 0.0).rz;  // with alpha 0: r stays the load
  while (report.iterations < equations + 10) {
    const double curvature = BackwardPass(*system, beta);
    const double alpha = rho / curvature;
    const auto [residualSquared, rhoNext] = ForwardPass(*system, alpha);
    const double ratio = residualSquared / loadSquared;
    if (!std::isfinite(curvature) || !std::isfinite(alpha) || !std::isfinite(ratio)) {
      return std::nullopt;
    }
    ++report.iterations;
    report.relativeResidual = std::sqrt(ratio);
    report.converged = ratio <= tolerance * tolerance;
    if (report.converged) break;
    beta = rhoNext / rho;
    rho = rhoNext;
    if (!std::isfinite(rho) || !std::isfinite(beta)) return std::nullopt;
  }

  const auto solution = model.SolutionVector.Raw();
  system->ForEachEquation(system->x, [&solution](int equation, double& number) {
    solution[static_cast<std::size_t>(equation)] = number;
  });
  return report;
} catch (const std::bad_alloc&) {
  throw RunTimeError(ErrorKind::kOutOfMemory, "no memory for the equation system");
}

}  // namespace quillane
