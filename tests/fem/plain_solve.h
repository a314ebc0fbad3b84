// The plain procedures of assembly and solution one after another.
#pragma once

#include "fem/assembly.h"
#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/solver.h"

namespace quillane::test {

/// Numbering and assembly of the model as it stands.
inline void Assemble(Model& m) {
  CalcElementStiffness(m);
  NumberEquations(m);
  AssembleStiffness(m);
  AssembleLoads(m);
  CompressStiffness(m.EquationCount, kRowCapacity, m.UpperCount, m.UpperColumn, m.UpperValue,
                    m.DiagonalValue, m.StiffnessMatrix, m.LoadVector, m.SolutionVector);
}

/// Solves the equations assembled before.
inline SolveReport SolveAssembled(Model& m, double tolerance) {
  return SolveEquations(m.EquationCount, kRowCapacity, m.UpperCount, m.LowerCount, m.UpperColumn,
                        m.LowerColumn, m.UpperValue, m.LowerValue, m.DiagonalValue, m.LoadVector,
                        tolerance, m.SolutionVector, m.FactorUpper, m.FactorLower, m.FactorInvDiag,
                        m.ResidualVector, m.DirectionVector, m.PrecondVector, m.ProductVector,
                        m.TransposeFill);
}

}  // namespace quillane::test
