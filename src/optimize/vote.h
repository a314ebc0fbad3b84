// The stages of a search: steps of the rule at targets that are chosen from the present stresses.
#pragma once

#include <vector>

#include "model/model.h"

namespace quillane {

/// A stress analysis, which sets the potentials anew, and then `steps` optimization steps.
struct Stage {
  bool analyses = true;     ///< false: the steps go on from the potentials that the last stage left
  Single stressTarget = 0;  ///< MPa
  Integer epsilon = 0;
  Single lambda = 0;
  int steps = 0;
};

/// Gives the model the target, Epsilon and Lambda of a stage.
void Prescribe(const Stage& stage, Model& model);

/// A stage whose target is chosen from the stresses; or single steps at falling targets.
struct Vote {
  Integer epsilon;
  double room = 0;    ///< cells it may leave beyond the aim, as a share of the aim
  Single lambda = 0;  ///< 0: the way's, and VoteSteps at one target
  int targets = 1;    ///< a step each
};

/// Steps after which a cell that a target does not feed enough has gone, and an empty one that it
/// feeds enough is filled, as long as the stresses stay: by then every cell has voted once. 1 for a
/// Lambda of 1. lambda: above 0 and up to 1; epsilon: 1 to 10. At most the largest int.
int VoteSteps(Single lambda, Integer epsilon);

/// The stress targets steps t, ..., 2 t, t, of which t is the smallest of four digits by which so
/// many single steps after an analysis leave at most `cells` cells in the plate, if only the last
/// step changes it; 0 where every target does. For one step and a lambda of 1 it is the target of a
/// vote of VoteSteps, too. Cells of equal stress, as symmetric plates have them, stay or leave
/// together. lambda: above 0 and up to 1.
std::vector<Single> TargetsThatKeep(const Model& model, Single lambda, Integer epsilon, int steps,
                                    int cells);

/// The stages by which a vote leaves at most `cells` cells in the plate. lambda: of a vote that has
/// none of its own.
std::vector<Stage> StagesOf(const Vote& vote, Single lambda, int cells, const Model& model);

}  // namespace quillane
