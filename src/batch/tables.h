// Tables of the final model.
#pragma once

#include <string>

#include "model/model.h"

namespace quillane {

/// Returns "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step", then a line a cell;
/// stresses in MPa, 17 digits; step is StepCount. ResumeFrom reads it back.
std::string CellTable(const Model& model);

/// Returns "node,x,y,u,v", then a line a node; mm, 17 digits.
std::string NodeTable(const Model& model);

}  // namespace quillane
