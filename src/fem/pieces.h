// The separate pieces of a plate, whether they are held, and the loads that they do not carry.
#pragma once

#include <span>
#include <vector>

#include "model/model.h"

namespace quillane {

/// An edge-connected set of present cells. Two cells that touch only at a corner form a hinge, not
/// a connection.
struct Piece {
  int cells = 0;
  bool touchesLoad = false;     ///< a load acts on one of its nodes
  bool touchesSupport = false;  ///< one of its nodes is held
  bool held = false;            ///< its supports leave it no displacement in x or y and no rotation
};

struct Pieces {
  Array2<Integer> pieceOfCell{"pieceOfCell"};  ///< (1..rows, 1..columns) from 1; 0 without material
  std::vector<Piece> pieces;                   ///< piece k at [k - 1], in order of their first cell
};

/// Finds the pieces of the present layout, row by row. Reads CellState, ElementNodes, NodeXY,
/// NodeFreedom and NodeLoad. Throws RunTimeError (subscript) where an element names a node outside
/// the mesh.
Pieces FindPieces(const Model& model);

/// Likewise with NodeFreedom and NodeLoad of `loadCase`, a model of the same grid, and all else of
/// `model`.
Pieces FindPieces(const Model& model, const Model& loadCase);

/// Empties the design cells of pieces that touch neither a load nor a support, in the model or in
/// any load case. Returns the number of these pieces.
int DropLoosePieces(Model& model, std::span<const Model> loadCases = {});

/// Returns the nodes, ascending, with a load that no held piece carries. A load against a support
/// of its own node needs no piece. Throws as FindPieces.
std::vector<int> LostLoads(const Model& model);
/// Likewise with supports and loads of `loadCase`, as FindPieces.
std::vector<int> LostLoads(const Model& model, const Model& loadCase);

}  // namespace quillane
