// The mesh of the cell grid: its layout, its active nodes and its equation numbers.
#pragma once

#include "model/model.h"

namespace quillane {

/// Builds the mesh of a new grid: sets CellRowCount, CellColumnCount, NodeCount and ElementCount,
/// re-creates every grid array zero-filled and fills NodeXY (mm; sums of ElementSize in single
/// precision from DomainX1, DomainY1) and ElementNodes (counter-clockwise from the lower left).
/// Throws RunTimeError (overflow) for more nodes or elements than an Integer counts and
/// RunTimeError (subscript) for a grid without cells.
void BuildMesh(Model& model, int rows, int columns);

/// Marks in NodeActive the nodes of present elements and clears DofNumber and ElementDofs.
void MarkActiveNodes(Model& model);

/// Gives every free component of an active node its equation number (ascending by node, x before
/// y), fills ElementDofs, sets EquationCount and re-creates LoadVector. Requires that
/// MarkActiveNodes has run on the present CellState. Throws RunTimeError (overflow) for more than
/// 32767 equations.
void NumberComponents(Model& model);

/// Re-creates, zero-filled, SolutionVector and the arrays of the plain procedures for EquationCount
/// equations; forgets the last solve.
void CreateEquationArrays(Model& model);

/// Runs NumberComponents and CreateEquationArrays; preconditions and errors as there.
void NumberEquations(Model& model);

}  // namespace quillane
