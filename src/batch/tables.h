// What a batch run tells in tables and pictures.
#pragma once

#include <string>

#include "batch/options.h"
#include "batch/run_summary.h"
#include "model/model.h"

namespace quillane {

/// "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy", then a line a cell; stresses in MPa,
/// 17 digits.
std::string CellTable(const Model& model);

/// "node,x,y,u,v", then a line a node; mm, 17 digits.
std::string NodeTable(const Model& model);

/// The names of a course's columns.
std::string CourseHeader();

/// The line of a step, 0 for the analysis.
std::string CourseLine(const Model& model, const SolveReport& report, int step, int cellsChanged);

/// The picture with its legend, as PNG; its label, where wanted, names step and volume. Throws
/// FileWriteError; RunTimeError where the model cannot be drawn.
std::string PictureFile(const BatchOptions& options, const Model& model, const RunSummary& summary);

}  // namespace quillane
