// From the solution to displacements, stresses and volume.
#pragma once

#include <array>
#include <vector>

#include "model/model.h"

namespace quillane {

/// Strain or stress: x, y, shear.
using PlaneTensor = std::array<double, 3>;

/// Gives every node its displacement (mm) in NodeDisp; 0 where a component has no equation.
void ScatterDisplacements(Model& model);

/// Writes the von Mises stress (MPa) at the centre of every present element into CellStress, 0 into
/// the other cells, and their largest, smallest and mean value. On purpose the largest is at least
/// 0 and the smallest at most 1E+10. Throws RunTimeError (floating point) when no cell holds an
/// element, when Poisson's ratio is 1 or -1, or when a stress is not finite; (subscript) when an
/// element names a node outside the mesh.
void ElementStresses(Model& model, Single elementSize, Double youngModulus, Double poissonRatio);

/// The components sigma_x, sigma_y and tau_xy (MPa) at the centre of every present element, from
/// NodeDisp: [element], from 1 to the number of cells; 0 where there is no element. Throws
/// RunTimeError as ElementStresses does for Poisson's ratio and nodes.
std::vector<PlaneTensor> ComponentStresses(const Model& model);

/// The work of the loads (N mm), the sum of their products with the displacements of their nodes in
/// NodeDisp: by this figure shapes of one volume are compared, the stiffest has the smallest.
double Compliance(const Model& model);

/// Volume (mm^3) of the cells that hold an element. Throws RunTimeError (floating point) where it
/// is not finite.
void DesignVolume(Model& model);

}  // namespace quillane
