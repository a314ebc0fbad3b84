// Edits of the design domain by two presses each: its rectangle, and the material of cells.
#pragma once

#include "edit/press.h"

namespace quillane {

/// Presses at (x, y), mm. The second one builds the domain between the grid points nearest to both
/// presses, empties everything, and ends its own edit mode. A grid that cannot be is refused: the
/// old domain stands and the next press is a first one again.
PressResult DesignDomainSet(Model& model, EditState& state, Single x, Single y);

/// Presses at (x, y), mm, in two cells: the second one gives every cell of their rectangle its new
/// state: kCellDesign, kCellNonDesign, kCellEmpty or kCellCutOut, in the order below. A press
/// outside the domain is refused and the press before it kept.
PressResult AddDesignElements(Model& model, EditState& state, Single x, Single y);
PressResult AddNonDesignElements(Model& model, EditState& state, Single x, Single y);
PressResult RemoveElements(Model& model, EditState& state, Single x, Single y);
PressResult DeleteDesignDomain(Model& model, EditState& state, Single x, Single y);

}  // namespace quillane
