// From a press on the canvas to the grid: nearest lines, the cell under it, the node next to it.
#pragma once

#include <optional>

#include "model/regular_grid.h"

namespace quillane {

/// Returns the grid line nearest to a coordinate, mm, ties towards +infinity; nothing if the line
/// has no single-precision coordinate (ElementSize 0).
std::optional<Single> NearestGridLine(Single position, Single elementSize);

/// Returns the number of the node nearest to a press at (x, y) mm; nothing if it lies outside the
/// domain rectangle (whose edges belong to it), there is no domain, or its row or column is no
/// Integer. The number follows from the present ElementSize and CellColumnCount, so on a mesh built
/// with another size it need not exist.
std::optional<int> NodeAt(const Model& model, Single x, Single y);

/// Returns that node if it is within an array's range: after a change of ElementSize, or in a file
/// that contradicts itself, the domain's rectangle may disagree with the mesh.
std::optional<int> NodeIn(const IndexRange& nodes, const Model& model, Single x, Single y);

/// Returns the cell under a press, rows and columns from 1; nothing if its lower left corner lies
/// outside the domain rectangle (whose right and upper edges do not belong to it). Otherwise as
/// NodeAt.
std::optional<CellIndex> CellAt(const Model& model, Single x, Single y);

/// Returns how many whole cells the cell under a press lies above and right of the domain's lower
/// left corner, from 0; here all four edges belong to the domain. Otherwise as NodeAt.
std::optional<CellIndex> CellOffsetAt(const Model& model, Single x, Single y);

}  // namespace quillane
