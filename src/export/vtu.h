// The analysed plate for programs that show fields.
#pragma once

#include <string>
#include <vector>

#include "model/model.h"

namespace quillane {

/// A VTU file: the quads of the cells with material and the nodes that they have, as the mesh
/// stands. By node: node (its number), displacement (mm), load (N), support (x and y, not 0: held);
/// by cell: row, column, state, stress (von Mises, MPa), potential. Numbers are exact. Throws
/// RunTimeError (subscript) where an element has nodes that do not exist.
std::string VtuText(const Model& model);

/// A PVD file: the series of these files, one a step from 0 on, by paths relative to its folder.
std::string PvdText(const std::vector<std::string>& files);

}  // namespace quillane
