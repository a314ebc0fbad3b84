// Captions with a value of the model at a press on the canvas.
#pragma once

#include <optional>
#include <string>

#include "model/model.h"

namespace quillane {

/// Returns the load (N) of the node nearest to a press at (x, y) mm as "Px = 10N  Py = -5N";
/// nothing if the press is outside the design domain or the mesh has no such node.
std::optional<std::string> loadValue(const Model& model, Single x, Single y);

/// Returns the displacement (mm) of the node as "u = 0mm  v = -0.25mm"; otherwise as loadValue.
std::optional<std::string> dispValue(const Model& model, Single x, Single y);

/// Returns "row,column   stress = 12.5MPa" with row and column of the pressed cell counted from 0,
/// which deliberately are the subscripts of CellStress: the value is that of the cell one row below
/// and one column left, and 0 (the border) in the lowest row and leftmost column. Returns nothing
/// if the press is outside the design domain, whose right and upper edges here belong to it, or
/// beyond the subscripts of CellStress. Throws RunTimeError (overflow) for a value beyond a Single.
std::optional<std::string> stressValue(const Model& model, Single x, Single y);

/// Returns "row,column   Potential = 3.5", counted likewise. Potential has no border: throws
/// RunTimeError (subscript) for a press in the lowest row or leftmost column.
std::optional<std::string> neuronValue(const Model& model, Single x, Single y);

}  // namespace quillane
