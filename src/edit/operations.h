// What presses do to the model, mode by mode: to the domain, its cells, supports and loads.
#pragma once

#include "edit/press.h"

namespace quillane {

/// Handles a press at (x, y), mm, on a corner of the domain. The second press builds the domain
/// between the grid points nearest to both, clears everything else and ends the edit mode. Refuses
/// an impossible grid: the old domain remains and the next press is a first one again.
PressResult DesignDomainSet(Model& model, EditState& state, Single x, Single y);

/// Handle a press at (x, y), mm, in a corner cell of a rectangle. The second press sets every cell
/// of the rectangle to kCellDesign, kCellNonDesign, kCellEmpty or kCellCutOut, respectively. A
/// press outside the domain is refused and keeps the first corner.
PressResult AddDesignElements(Model& model, EditState& state, Single x, Single y);
PressResult AddNonDesignElements(Model& model, EditState& state, Single x, Single y);
PressResult RemoveElements(Model& model, EditState& state, Single x, Single y);
PressResult DeleteDesignDomain(Model& model, EditState& state, Single x, Single y);

/// Writes both support flags of the node nearest to (x, y), mm, as EditMode says: kModeFixX,
/// kModeFixY, kModeFixXY or kModeFree; other codes write nothing.
PressResult FreedomSet(Model& model, EditState& state, Single x, Single y);

/// Replaces the load of the node nearest to (x, y), mm, by LoadFx, LoadFy.
PressResult LoadSet(Model& model, EditState& state, Single x, Single y);

}  // namespace quillane
