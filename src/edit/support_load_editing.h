// Edits of supports and loads by presses on nodes.
#pragma once

#include "edit/press.h"

namespace quillane {

/// Writes both support flags of the node nearest to (x, y), mm, as EditMode says: kModeFixX,
/// kModeFixY, kModeFixXY or kModeFree; other codes write nothing.
PressResult FreedomSet(Model& model, EditState& state, Single x, Single y);

/// Replaces the load of the node nearest to (x, y), mm, by LoadFx, LoadFy.
PressResult LoadSet(Model& model, EditState& state, Single x, Single y);

}  // namespace quillane
