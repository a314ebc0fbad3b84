#include "fem/analysis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "fem/stress.h"
#include "fem/wave_solver.h"

namespace quillane {
namespace {

/// Assembles the stiffness of the numbered components and compresses it into the row store.
void AssembleRows(Model& m) {
  AssembleStiffness(m);
  CompressStiffness(m.EquationCount, kRowCapacity, m.UpperCount, m.UpperColumn, m.UpperValue,
                    m.DiagonalValue, m.StiffnessMatrix, m.LoadVector, m.SolutionVector);
}

/// Returns why the numbered and loaded equations of the model have no finite solution.
ErrorCause CauseOfFailure(const Model& model) {
  const auto allZero = [](std::span<const Double> numbers) {
    return std::ranges::all_of(numbers, [](Double number) { return number == 0; });
  };
  const auto states = model.CellState.Raw();
  if (std::ranges::none_of(states, [](Integer state) { return state > 0; })) {
    return ErrorCause::kNoMaterial;
  }
  if (model.EquationCount == 0) return ErrorCause::kAllHeld;
  if (allZero(model.NodeLoad.Raw())) return ErrorCause::kNoLoad;
  if (allZero(model.LoadVector.Raw())) return ErrorCause::kIdleLoads;
  if (model.YoungModulus * model.Thickness == 0) return ErrorCause::kNoStiffness;
  return LostLoads(model).empty() ? ErrorCause::kUnsolvable : ErrorCause::kNotHeld;
}

/// Solves the numbered and loaded equations by the fast form, or by the plain one where it
/// declines.
SolveReport Solve(Model& model) try {
  model.SolutionVector.ReDim(0, model.EquationCount);
  if (const auto report = SolveOnWaves(model, kSolverTolerance)) return *report;
  CreateEquationArrays(model);
  AssembleRows(model);
  return SolveAssembledEquations(model, kSolverTolerance);
} catch (const RunTimeError& error) {
  if (error.Kind() != ErrorKind::kFloatingPoint) throw;
  throw RunTimeError(error, CauseOfFailure(model));
}

/// Returns |f - K u| / |f| with f the LoadVector, u the SolutionVector and K applied element by
/// element; a value that is not finite if a product is not. Entry 0 collects the forces of
/// components without an equation and does not count. The residual that the solver updates in its
/// iteration drifts from this one if the supports leave the plate a rigid body motion.
double TrueResidual(const Model& model) {
  const auto loads = model.LoadVector.Raw();
  std::vector<double> residual(loads.begin(), loads.end());
  ForEachPresentCell(model, [&](int, int, int e) {
    std::array<double, 9> force{};
    for (int b = 1; b <= 8; ++b) {
      const int equation = model.ElementDofs(e, b);
      const double displacement = equation == 0 ? 0.0 : model.SolutionVector(equation);
      for (std::size_t a = 1; a <= 8; ++a) force[a] += model.ElementStiffness[a][b] * displacement;
    }
    for (int a = 1; a <= 8; ++a) {
      residual[static_cast<std::size_t>(model.ElementDofs(e, a))] -=
          force[static_cast<std::size_t>(a)];
    }
  });
  double residualSquared = 0.0;
  double loadSquared = 0.0;
  for (std::size_t equation = 1; equation < loads.size(); ++equation) {
    residualSquared += residual[equation] * residual[equation];
    loadSquared += loads[equation] * loads[equation];
  }
  return std::sqrt(residualSquared / loadSquared);
}

}  // namespace

void AssembleEquations(Model& m) {
  CalcElementStiffness(m);
  NumberEquations(m);
  AssembleLoads(m);
  AssembleRows(m);
}

SolveReport SolveAssembledEquations(Model& m, double tolerance) {
  return SolveEquations(m.EquationCount, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn,
                        m.LowerColumn, m.UpperValue, m.LowerValue, m.DiagonalValue, m.LoadVector,
                        tolerance, m.SolutionVector, m.FactorUpper, m.FactorLower, m.FactorInvDiag,
                        m.ResidualVector, m.DirectionVector, m.PrecondVector, m.ProductVector,
                        m.TransposeFill);
}

SolveReport SolveStructure(Model& model) {
  CalcElementStiffness(model);
  NumberComponents(model);
  AssembleLoads(model);
  EquationSystem system = {model.ElementNodes, model.DofNumber,    model.LoadVector,
                           model.YoungModulus, model.PoissonRatio, model.Thickness};
  ForEachPresentCell(model, [&system](int, int, int e) { system.elements.push_back(e); });
  LastSolve& last = model.Solved;
  if (last.report && last.system == system) return *last.report;

  last.report.reset();
  SolveReport report = Solve(model);
  report.trueResidual = TrueResidual(model);
  report.converged = report.converged && report.trueResidual <= kTrueResidualBound;
  last = {std::move(system), report};
  return report;
}

SolveReport AnalyseStructure(Model& model) {
  const SolveReport report = SolveStructure(model);
  ScatterDisplacements(model);
  ElementStresses(model, model.ElementSize, model.YoungModulus, model.PoissonRatio);
  DesignVolume(model);
  return report;
}

}  // namespace quillane
