// What the rule makes of the present stresses: how long a vote of all cells takes, and its target.
#pragma once

#include "model/model.h"

namespace quillane {

/// Steps after which a cell that a target does not feed enough has gone, and an empty one that it
/// feeds enough is filled, as long as the stresses stay: by then every cell has voted once. 1 for a
/// Lambda of 1. lambda: above 0 and up to 1; epsilon: 1 to 10. At most the largest int.
int VoteSteps(Single lambda, Integer epsilon);

/// The smallest stress target of four digits by which one step after an analysis leaves at most
/// `cells` cells in the plate; 0 where every target does. For a lambda of 1 it is the target of a
/// vote of VoteSteps, too. Cells of equal stress, as symmetric plates have them, stay or leave
/// together. lambda: above 0 and up to 1.
Single TargetThatKeeps(const Model& model, Single lambda, Integer epsilon, int cells);

}  // namespace quillane
