// Whether the loads have a way through the material to supports that hold it.
#pragma once

#include <vector>

#include "model/model.h"

namespace quillane {

/// The nodes, ascending, whose load no held piece carries. A piece is what hangs together of the
/// present cells edge by edge: two cells that touch at a corner only are a hinge, and no way. It is
/// held when its supports leave it neither a displacement in x or y nor a rotation. Reads
/// CellState, ElementNodes, NodeXY, NodeFreedom and NodeLoad. Throws RunTimeError (subscript) where
/// an element names a node outside the mesh.
std::vector<int> LostLoads(const Model& model);

}  // namespace quillane
