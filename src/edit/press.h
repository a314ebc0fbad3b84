// What a press on the canvas does to the model.
#pragma once

#include "edit/edit_state.h"
#include "model/model.h"

namespace quillane {

/// What became of a press, for the window to show.
enum class PressResult {
  kNothing,           ///< the mode has no use for presses
  kFirstCorner,       ///< the first of two corners is held; the model stands as it was
  kEdited,            ///< the model changed
  kNewDomain,         ///< a new design domain replaced the model
  kLoaded,            ///< a node has a new load
  kOriginMoved,       ///< the view changed
  kReadLoad,          ///< the value at the press is to be told: a node's load,
  kReadDisplacement,  ///< its displacement,
  kReadStress,        ///< a cell's stress,
  kReadPotential,     ///< its potential
  kElementOutside,    ///< refused: no element of the design domain
  kNodeOutside,       ///< refused: no node of the design domain
  kImpossibleDomain,  ///< refused: no cells, or more nodes or elements than can be counted
};

/// A press at (x, y), mm, in the present EditMode. A refused press changes nothing but ClickCount.
PressResult Press(Model& model, EditState& state, Single x, Single y);

/// Sets EditMode and drops a held corner. False, the mode left as it is, where the mode needs a
/// design domain and there is none.
bool BeginMode(Model& model, Integer mode);

}  // namespace quillane
