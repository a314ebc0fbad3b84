// Whether a model is what the fast solver can take.
#pragma once

#include "model/model.h"

namespace quillane {

/// True if the mesh is the one that BuildMesh makes of CellRowCount x CellColumnCount cells and the
/// equations run 1, 2, ... along its nodes, u before v, without gaps. A file can hold
/// another mesh.
bool IsRegularGrid(const Model& model);

}  // namespace quillane
