#include "fem/analysis.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "fem/residual.h"
#include "fem/stress.h"
#include "fem/wave_solver.h"

namespace quillane {

namespace {

EquationSystem Describe(const Model& model) {
  const auto copy = [](const auto& array) {
    const auto raw = array.Raw();
    return std::vector(raw.begin(), raw.end());
  };
  EquationSystem system{.rows = model.CellRowCount,
                        .columns = model.CellColumnCount,
                        .isPresent = {},
                        .nodes = copy(model.ElementNodes),
                        .equations = copy(model.DofNumber),
                        .stiffness = {},
                        .loads = copy(model.LoadVector)};
  const auto states = model.CellState.Raw();
  system.isPresent.resize(states.size());
  std::ranges::transform(states, system.isPresent.begin(), [](Integer state) { return state > 0; });
  for (const auto& row : model.ElementStiffness) {
    system.stiffness.insert(system.stiffness.end(), std::begin(row), std::end(row));
  }
  return system;
}

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
  EquationSystem system = Describe(model);
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
