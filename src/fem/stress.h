// From the solution to displacements, stresses and volume.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "model/model.h"

namespace quillane {

/// Strain or stress: x, y, shear.
using PlaneTensor = std::array<double, 3>;

/// Copies SolutionVector into NodeDisp (mm), node by node; 0 for a component without an equation.
void ScatterDisplacements(Model& model);

/// Writes the von Mises stress (MPa) at the centre of every present element into CellStress, 0 into
/// the other cells, and computes the largest, smallest and mean value. Deliberately the largest is
/// at least 0 and the smallest at most 1E+10. Throws RunTimeError: floating point if no cell holds
/// an element, Poisson's ratio is 1 or -1 or a stress is not finite; subscript if an element names
/// a node outside the mesh.
void ElementStresses(Model& model, Single elementSize, Double youngModulus, Double poissonRatio);

/// Writes into CellStress the largest of several fields of stresses (MPa), 0 where there is no
/// element, and computes the largest, smallest and mean value as ElementStresses does. fields:
/// arrays as CellStress, at least one. Throws as ElementStresses for a model without elements.
void EnvelopeStresses(Model& model, std::span<const Array2<Double>* const> fields);

/// Returns the components sigma_x, sigma_y and tau_xy (MPa) at the centre of every present element,
/// computed from NodeDisp: [element], from 1 to the number of cells; 0 if it is absent. Throws
/// RunTimeError as ElementStresses for Poisson's ratio and nodes.
std::vector<PlaneTensor> ComponentStresses(const Model& model);

/// Returns the work of the loads (N mm): the sum of their products with the displacements of their
/// nodes in NodeDisp. Of shapes of equal volume the stiffest has the smallest.
double Compliance(const Model& model);

/// Writes the volume (mm^3) of the cells that hold an element into Volume. Throws RunTimeError
/// (floating point) if it is not finite.
void DesignVolume(Model& model);

}  // namespace quillane
