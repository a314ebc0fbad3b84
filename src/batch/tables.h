// Tables of a model: written at the end of a run, read back to go on from there.
#pragma once

#include <span>
#include <string>

#include "model/model.h"
#include "optimize/load_cases.h"

namespace quillane {

/// Returns "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step", then one line per cell;
/// stresses in MPa, 17 digits; step is StepCount. With the results of several load cases,
/// ",stress_1" and so on follow: the von Mises stress of each.
std::string CellTable(const Model& model, std::span<const LoadCaseResult> cases = {});

/// Sets states, potentials and StepCount from a table that CellTable wrote of this model; further
/// columns are ignored. Throws ModelFileError and leaves the model unchanged if the text is no such
/// table, or one of another grid or with other cells cut out.
void ResumeFrom(Model& model, const std::string& cellTable);

/// Returns "node,x,y,u,v", then one line per node; mm, 17 digits.
std::string NodeTable(const Model& model);

}  // namespace quillane
