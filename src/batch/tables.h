// What a batch run tells in tables and pictures.
#pragma once

#include <string>

#include "batch/options.h"
#include "model/model.h"

namespace quillane {

/// "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step", then a line a cell; stresses in
/// MPa, 17 digits; step is StepCount. ResumeFrom reads it back.
std::string CellTable(const Model& model);

/// "node,x,y,u,v", then a line a node; mm, 17 digits.
std::string NodeTable(const Model& model);

/// The picture with its legend, as PNG; its label, where wanted, names the step and the volume as a
/// share of startVolume (mm^3). Throws FileWriteError; RunTimeError where the model cannot be
/// drawn.
std::string PictureFile(const BatchOptions& options, const Model& model, int step,
                        double startVolume);

}  // namespace quillane
