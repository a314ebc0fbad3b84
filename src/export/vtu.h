// The analysed plate for programs that visualize fields.
#pragma once

#include <string>
#include <vector>

#include "model/model.h"

namespace quillane {

/// Returns a VTU file of the cells with material as quads and of their nodes, as the mesh has them.
/// By node: node (its number), displacement (mm), load (N), support (x and y, not 0: held); by
/// cell: row, column, state, stress (von Mises, MPa), potential. Numbers are exact. Throws
/// RunTimeError (subscript) if an element has nodes that do not exist.
std::string VtuText(const Model& model);

/// Returns a PVD file: a series of files, one for each step from 0. Paths are relative to its
/// folder.
std::string PvdText(const std::vector<std::string>& files);

}  // namespace quillane
