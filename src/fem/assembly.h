// From element stiffness and nodal forces to the linear system of the structure.
#pragma once

#include "model/model.h"

namespace quillane {

/// Adds ElementStiffness of every present element into StiffnessMatrix (N/mm). Skips components
/// without an equation, which fixes them at zero displacement. Throws RunTimeError: floating point
/// where a sum is not finite, subscript where the mesh does not fit the grid.
void AssembleStiffness(Model& model);

/// Writes the nodal forces (N) into LoadVector. Drops forces on components without an equation: the
/// support takes them.
void AssembleLoads(Model& model);

/// Copies the strictly upper triangle of stiffness rows 1..n, without the entries that are exactly
/// zero, into the row store (columns ascending, slots from 1) and the diagonal apart; clears
/// solution. Throws RunTimeError (subscript) for a row of more entries than slots. capacity and
/// load are parameters of every procedure on the row store and deliberately unused here.
void CompressStiffness(Integer n, Integer capacity, Array1<Integer>& upperCount,
                       Array2<Integer>& upperColumn, Array2<Double>& upperValue,
                       Array1<Double>& diagonalValue, const CouplingMatrix& stiffness,
                       const Array1<Double>& load, Array1<Double>& solution);

}  // namespace quillane
