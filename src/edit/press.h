// What a press on the canvas does to the model.
#pragma once

#include "edit/edit_state.h"
#include "model/model.h"

namespace quillane {

/// The outcome of a press, for the window to show.
enum class PressResult {
  kNothing,           ///< the mode ignores presses
  kFirstCorner,       ///< the first of two corners is held; the model is unchanged
  kEdited,            ///< the model changed
  kNewDomain,         ///< a new design domain replaced the model
  kLoaded,            ///< a node has a new load
  kOriginMoved,       ///< the view changed
  kReadLoad,          ///< show the value at the press: a node's load,
  kReadDisplacement,  ///< its displacement,
  kReadStress,        ///< a cell's stress,
  kReadPotential,     ///< its potential
  kElementOutside,    ///< refused: no element of the design domain
  kNodeOutside,       ///< refused: no node of the design domain
  kImpossibleDomain,  ///< refused: no cells, or more nodes or elements than can be counted
};

/// Handles a press at (x, y), mm, in the current EditMode. A refused press changes at most
/// ClickCount.
PressResult Press(Model& model, EditState& state, Single x, Single y);

/// Sets EditMode and drops a held corner. Returns false and keeps the mode if the mode needs a
/// design domain and there is none.
bool BeginMode(Model& model, Integer mode);

}  // namespace quillane
