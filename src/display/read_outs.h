// Captions that tell one number of the model at a press on the canvas.
#pragma once

#include <optional>
#include <string>

#include "model/model.h"

namespace quillane {

/// The load (N) of the node nearest to a press at (x, y) mm, "Px = 10N  Py = -5N"; nothing when
/// the press is outside the design domain or the mesh has no such node.
std::optional<std::string> loadValue(const Model& model, Single x, Single y);

/// The displacement (mm) of the node, "u = 0mm  v = -0.25mm"; otherwise as loadValue.
std::optional<std::string> dispValue(const Model& model, Single x, Single y);

/// "row,column   stress = 12.5MPa" with row and column of the pressed cell counted from 0, used on
/// purpose as they stand as subscripts of CellStress: the value is that of the cell one row below
/// and one column left, and 0 (the border) in the lowest row and leftmost column. Nothing when the
/// press is outside the design domain, whose right and upper edges here belong to it, or outside
/// CellStress. Throws RunTimeError (overflow) for a value that is no Single.
std::optional<std::string> stressValue(const Model& model, Single x, Single y);

/// "row,column   Potential = 3.5", counted likewise; Potential has no border, so a press in the
/// lowest row or leftmost column throws RunTimeError (subscript).
std::optional<std::string> neuronValue(const Model& model, Single x, Single y);

}  // namespace quillane
