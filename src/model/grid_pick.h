// From a press on the canvas to the grid: nearest lines, the cell under it, the node next to it.
#pragma once

#include <optional>

#include "model/model.h"

namespace quillane {

/// The grid line nearest to a coordinate, halves towards +infinity, mm; nothing where the line has
/// no single-precision coordinate (an ElementSize of zero).
std::optional<Single> NearestGridLine(Single position, Single elementSize);

/// A cell by its row (along y) and column (along x).
struct CellIndex {
  Integer row = 0;
  Integer column = 0;
  friend bool operator==(const CellIndex&, const CellIndex&) = default;
};

/// The number of the node nearest to a press at (x, y) mm; nothing when it lies outside the domain
/// rectangle (edges belong to it), there is no domain, or a row or column is no Integer. The number
/// counts with the present ElementSize and CellColumnCount, so on a mesh built with another size it
/// need not exist.
std::optional<int> NodeAt(const Model& model, Single x, Single y);

/// That node as far as an array by node has it: a changed ElementSize or an odd file can make the
/// domain's rectangle disagree with the mesh.
std::optional<int> NodeIn(const IndexRange& nodes, const Model& model, Single x, Single y);

/// The cell under a press, rows and columns from 1; nothing when its lower left corner lies outside
/// the domain rectangle (whose right and upper edges do not belong to it). Otherwise as NodeAt.
std::optional<CellIndex> CellAt(const Model& model, Single x, Single y);

/// How many whole cells the lower left corner of the cell under a press lies above and right of the
/// domain's lower left corner, from 0; here all four edges belong to the domain. Otherwise as
/// NodeAt.
std::optional<CellIndex> CellOffsetAt(const Model& model, Single x, Single y);

}  // namespace quillane
