// Edits of supports and loads by presses on nodes.
#pragma once

#include "edit/press.h"

namespace quillane {

/// Writes both support flags of the node nearest to (x, y), mm, as EditMode says:
/// kModeFixX, kModeFixY, kModeFixXY or kModeFree; other codes write nothing.
PressResult FreedomSet(Model& model, EditState& state, Single x, Single y);

/// Gives the node nearest to (x, y), mm, the force LoadFx, LoadFy in place of what it had.
PressResult LoadSet(Model& model, EditState& state, Single x, Single y);

}  // namespace quillane
