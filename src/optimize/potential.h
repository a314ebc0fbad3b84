// The rule that adds and removes material: a potential per cell that forgets and is fed.
#pragma once

#include "model/model.h"

namespace quillane {

/// Sets the potential of every occupied cell to its saturated value (10 within single precision)
/// and PotentialIncrement from Lambda. Throws RunTimeError (floating point) for Lambda 0 with an
/// occupied cell, (overflow) for a Lambda whose increment passes single precision.
void InitPotential(Model& model);

/// Updates potentials and states from CellStress: every potential loses the share Lambda and gains
/// PotentialIncrement for each of the cell and its four edge neighbours whose stress (as a Single)
/// is strictly above StressTarget; then every design cell (state 0 or 1) holds material exactly if
/// its potential is at least Epsilon. Throws RunTimeError: overflow if an increment or a stress is
/// no Single, floating point if a potential is not finite.
void UpdatePotential(Model& model);

}  // namespace quillane
