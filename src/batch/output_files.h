// The files quillane-batch leaves behind.
#pragma once

#include <filesystem>
#include <string>

#include "image/picture.h"
#include "model/model.h"

namespace quillane {

/// "row,column,state,stress,potential", then a line a cell; stress in MPa, 17 digits.
std::string CellTable(const Model& model);

/// "node,x,y,u,v", then a line a node; mm, 17 digits.
std::string NodeTable(const Model& model);

/// The picture with its legend as a PNG file. Throws FileWriteError; RunTimeError where the model
/// cannot be drawn.
void WritePicture(const Model& model, PictureKind kind, int width, int height,
                  const std::filesystem::path& path);

}  // namespace quillane
