// The one structure that holds the whole state of the program.
#pragma once

#include <array>
#include <string>

#include "model/arrays.h"
#include "model/coupling_matrix.h"
#include "model/solve_report.h"
#include "model/types.h"

namespace quillane {

/// Codes of Model::CellState. A cell holds an element exactly when its code is greater than 0.
inline constexpr Integer kCellCutOut = -3;
inline constexpr Integer kCellEmpty = 0;
inline constexpr Integer kCellDesign = 1;
inline constexpr Integer kCellNonDesign = 2;

/// Returns whether the code is one of these.
constexpr bool IsCellState(int code) {
  return code == kCellCutOut || (code >= kCellEmpty && code <= kCellNonDesign);
}

/// Codes of Model::EditMode: what a press on the canvas does.
inline constexpr Integer kModeNothing = 0;
inline constexpr Integer kModeDomain = 1;        ///< a corner of the design domain
inline constexpr Integer kModeDesign = 2;        ///< a corner of a rectangle of design cells
inline constexpr Integer kModeNonDesign = 3;     ///< of non-design cells
inline constexpr Integer kModeCutOut = -1;       ///< of cells cut out of the domain
inline constexpr Integer kModeRemove = -2;       ///< of empty cells
inline constexpr Integer kModeLoad = 4;          ///< the force last entered acts on the node
inline constexpr Integer kModeDisplacement = 5;  ///< the four read-outs
inline constexpr Integer kModeStress = 6;
inline constexpr Integer kModePotential = 7;
inline constexpr Integer kModeLoadValue = 8;
inline constexpr Integer kModeOrigin = 9;
inline constexpr Integer kModeFixX = 11;  ///< from here on supports of the node
inline constexpr Integer kModeFixY = 12;
inline constexpr Integer kModeFixXY = 13;
inline constexpr Integer kModeFree = 14;

/// Codes of Model::DisplayMode: the map that a step shows.
inline constexpr Integer kShowStress = 1;
inline constexpr Integer kShowPotential = 2;

/// Off-diagonal slots of one equation in the sparse row store.
inline constexpr Integer kRowCapacity = 9;

/// The whole state of the program, with its start-up values. Lengths in mm, forces in N, stresses
/// and moduli in MPa. Arrays are empty until a domain is set up or a model is opened; where a range
/// starts at 0, index 0 exists and is unused. n stands for EquationCount.
struct Model {
  // Grid and view.
  Single ElementSize = 100;   ///< edge of every square cell, mm
  Single DomainWidth = 2000;  ///< width that the canvas shows, mm
  Single DomainHeight = 0;    ///< height that the canvas shows, mm; from the canvas's aspect
  Single OriginFracX = 0.5F;  ///< the origin's distance from the right edge, in DomainWidths
  Single OriginFracY = 0.5F;  ///< the origin's distance from the top edge, in DomainHeights
  Single ViewRight = 0;       ///< x of the canvas's right edge, mm
  Single ViewTop = 0;         ///< y of the canvas's top edge, mm
  Single DomainX1 = 0, DomainX2 = 0;       ///< left and right edge of the design domain, mm
  Single DomainY1 = 0, DomainY2 = 0;       ///< lower and upper edge of the design domain, mm
  Integer CellRowCount = 0;                ///< rows of cells, counted upward along y
  Integer CellColumnCount = 0;             ///< columns of cells, counted rightward along x
  Array2<Integer> CellState{"CellState"};  ///< (1..rows, 1..columns), codes above

  // Mesh. Nodes and elements are numbered row by row from the lower left, x fastest.
  Integer NodeCount = 0;
  Integer ElementCount = 0;
  Array2<Double> NodeXY{"NodeXY"};               ///< (0..nodes, 1..2) x, y, mm
  Array2<Integer> ElementNodes{"ElementNodes"};  ///< (0..elements, 1..4) counter-clockwise
  Array1<Integer> NodeActive{"NodeActive"};      ///< (0..nodes) 1: belongs to a present element
  Array2<Integer> DofNumber{"DofNumber"};        ///< (0..nodes, 1..2) equation of u, v; 0 none
  Array2<Integer> ElementDofs{"ElementDofs"};    ///< (0..elements, 1..8) u1 v1 u2 v2 ...; 0 none
  Integer EquationCount = 0;

  // Supports and loads.
  Array2<Integer> NodeFreedom{"NodeFreedom"};  ///< (0..nodes, 1..2) x, y; 0 free, else fixed
  Array2<Double> NodeLoad{"NodeLoad"};         ///< (0..nodes, 1..2) Fx, Fy, N
  Double LoadFx = 0, LoadFy = 0;               ///< the force last entered, N

  // Material.
  Double YoungModulus = 210000;  ///< MPa
  Double PoissonRatio = 0.3;
  Double Thickness = 1.0;  ///< mm

  // Optimization.
  Single StressTarget = 0;                ///< MPa
  Integer Epsilon = 1;                    ///< potential below which a design cell is emptied
  Single Lambda = 0.05F;                  ///< forget coefficient per step
  Single PotentialIncrement = 0;          ///< Lambda * 10 / 5
  Array2<Double> Potential{"Potential"};  ///< (1..rows, 1..columns), 0 to 10

  // Equation system. LoadVector and SolutionVector are valid after every solve; the other arrays,
  // re-created by NumberEquations, only after one by the plain procedures.
  Double ElementStiffness[9][9] = {};               ///< (1..8, 1..8) N/mm; row and column 0 unused
  CouplingMatrix StiffnessMatrix;                   ///< (0..n, 0..n) N/mm
  Array1<Double> LoadVector{"LoadVector"};          ///< (0..n) N
  Array1<Double> SolutionVector{"SolutionVector"};  ///< (0..n) mm
  Array1<Integer> UpperCount{"UpperCount"};         ///< (0..n) stored entries right of the diagonal
  Array1<Integer> LowerCount{"LowerCount"};         ///< (0..n) stored entries left of the diagonal
  Array2<Integer> UpperColumn{"UpperColumn"};       ///< (slot 0..9, 0..n) ascending columns
  Array2<Integer> LowerColumn{"LowerColumn"};       ///< likewise
  Array2<Double> UpperValue{"UpperValue"};          ///< (slot 0..9, 0..n) N/mm
  Array2<Double> LowerValue{"LowerValue"};          ///< likewise
  Array2<Double> FactorUpper{"FactorUpper"};        ///< L transposed, slots as UpperColumn
  Array2<Double> FactorLower{"FactorLower"};        ///< L, slots as LowerColumn
  Array1<Double> DiagonalValue{"DiagonalValue"};    ///< (0..n) N/mm
  Array1<Double> FactorInvDiag{"FactorInvDiag"};    ///< (0..n) reciprocal pivots
  Array1<Double> ResidualVector{"ResidualVector"};  ///< (0..n) r = f - K u, N
  Array1<Double> DirectionVector{"DirectionVector"};  ///< (0..n) p
  Array1<Double> PrecondVector{"PrecondVector"};      ///< (0..n) z, the preconditioned residual
  Array1<Double> ProductVector{"ProductVector"};      ///< (0..n) q = K p
  Array1<Integer> TransposeFill{"TransposeFill"};     ///< (0..n) counters of the transposition

  LastSolve Solved;  ///< an unchanged system is not solved again

  // Results of the last analysis.
  Array2<Double> NodeDisp{"NodeDisp"};      ///< (0..nodes, 1..2) u, v, mm
  Array2<Double> CellStress{"CellStress"};  ///< (0..rows+1, 0..columns+1) von Mises, MPa; border 0
  Double MaxStress = 0, MinStress = 0, AvgStress = 0;  ///< MPa
  Double Volume = 0;                                   ///< mm^3

  // Interaction.
  Integer EditMode = kModeNothing;    ///< codes above
  Integer ClickCount = 0;             ///< presses made in a two-press rectangle
  Integer DomainDefined = 0;          ///< kTrue once a design domain exists
  Integer DisplayMode = kShowStress;  ///< codes above
  Integer AutoOptimize = 0;           ///< kTrue while steps follow each other by themselves
  Integer StepCount = 0;              ///< number of the next optimization step
  Integer HistoryRecording = 0;       ///< kTrue while the history file is open
  std::string ModelFilePath;          ///< model file last saved or opened
};

/// Returns the element of cell (row, column), both from 1.
inline int ElementOfCell(const Model& model, int row, int column) {
  return (row - 1) * model.CellColumnCount + column;
}

/// Returns the nodes of an element in their order.
inline std::array<int, 4> NodesOfElement(const Model& model, int element) {
  return {model.ElementNodes(element, 1), model.ElementNodes(element, 2),
          model.ElementNodes(element, 3), model.ElementNodes(element, 4)};
}

/// Returns whether row and column name a cell of the grid.
inline bool IsCell(const Model& model, int row, int column) {
  return row >= 1 && row <= model.CellRowCount && column >= 1 && column <= model.CellColumnCount;
}

/// Returns whether row and column name a cell that holds an element.
inline bool HasMaterial(const Model& model, int row, int column) {
  return IsCell(model, row, column) && model.CellState(row, column) > 0;
}

/// Returns whether a force acts on a node.
inline bool IsLoaded(const Model& model, int node) {
  return model.NodeLoad(node, 1) != 0 || model.NodeLoad(node, 2) != 0;
}
/// Returns whether a node is fixed in x or y.
inline bool IsHeld(const Model& model, int node) {
  return model.NodeFreedom(node, 1) != 0 || model.NodeFreedom(node, 2) != 0;
}

/// Calls use(row, column, element) for every cell that holds an element, row by row.
template <class Use>
void ForEachPresentCell(const Model& model, const Use& use) {
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      if (model.CellState(i, j) > 0) use(i, j, ElementOfCell(model, i, j));
    }
  }
}

/// Re-creates every array that belongs to the grid and its nodes and elements, zero-filled, from
/// CellRowCount, CellColumnCount, NodeCount and ElementCount. Throws RunTimeError where a count
/// cannot size an array.
void ReDimGridArrays(Model& model);

/// Zeroes the results of the last analysis, the potentials and StepCount.
void ClearResults(Model& model);

}  // namespace quillane
