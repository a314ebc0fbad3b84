// Whether the loads are connected to adequate supports.
#pragma once

#include <vector>

#include "model/model.h"

namespace quillane {

/// Returns the nodes, ascending, with a load that no held piece (pieces.h) carries. A load against
/// a support of its own node needs no piece. Throws RunTimeError as FindPieces.
std::vector<int> LostLoads(const Model& model);

/// Likewise with NodeFreedom and NodeLoad of `loadCase`, a model of the same grid, and all else of
/// `model`.
std::vector<int> LostLoads(const Model& model, const Model& loadCase);

}  // namespace quillane
