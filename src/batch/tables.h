// Tables of the final model.
#pragma once

#include <span>
#include <string>

#include "model/model.h"
#include "optimize/load_cases.h"

namespace quillane {

/// Returns "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step", then one line per cell;
/// stresses in MPa, 17 digits; step is StepCount. With the results of several load cases,
/// ",stress_1" and so on follow: the von Mises stress of each. ResumeFrom reads it back.
std::string CellTable(const Model& model, std::span<const LoadCaseResult> cases = {});

/// Returns "node,x,y,u,v", then one line per node; mm, 17 digits.
std::string NodeTable(const Model& model);

}  // namespace quillane
