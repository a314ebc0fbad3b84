// The state of editing beside the model.
#pragma once

#include "model/grid_pick.h"
#include "model/model.h"

namespace quillane {

/// The first corner of a rectangle that takes two presses, and whether the model has been edited.
struct EditState {
  Integer cornerMode = kModeNothing;  ///< EditMode of the press that gave the corner
  Single cornerX = 0, cornerY = 0;    ///< of a new design domain, on the grid, mm
  CellIndex cornerCell;               ///< of a rectangle of cells
  bool changedSinceAnalysis = false;  ///< cells, supports, loads or material
};

/// Returns whether a first corner waits for its second press. The end of the mode drops it.
inline bool HoldsCorner(const Model& model, const EditState& state) {
  return model.ClickCount == 1 && model.EditMode == state.cornerMode;
}

}  // namespace quillane
