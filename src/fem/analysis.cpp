// The finite-element chain, step by step.
#include "fem/analysis.h"

#include <optional>

#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/grid_solver.h"
#include "fem/mesh.h"
#include "fem/residual.h"
#include "fem/stress.h"

namespace quillane {

void AssembleEquations(Model& m) {
  CalcElementStiffness(m);
  NumberEquations(m);
  AssembleStiffness(m);
  AssembleLoads(m);
  CompressStiffness(m.EquationCount, kRowCapacity, m.UpperCount, m.UpperColumn, m.UpperValue,
                    m.DiagonalValue, m.StiffnessMatrix, m.LoadVector, m.SolutionVector);
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
  std::optional<SolveReport> report = SolveOnGrid(model, kSolverTolerance);
  if (!report) {
    AssembleEquations(model);
    report = SolveAssembledEquations(model, kSolverTolerance);
  }
  report->trueResidual = TrueResidual(model);
  report->converged = report->converged && report->trueResidual <= kTrueResidualBound;
  return *report;
}

SolveReport AnalyseStructure(Model& model, const std::function<void()>& stressesReady) {
  const SolveReport report = SolveStructure(model);
  ScatterDisplacements(model);
  ElementStresses(model, model.ElementSize, model.YoungModulus, model.PoissonRatio);
  if (stressesReady) stressesReady();
  DesignVolume(model);
  return report;
}

}  // namespace quillane
