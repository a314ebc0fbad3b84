// The formats of an outline's file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "export/shape.h"

namespace quillane {

enum class OutlineFormat { kSvg, kDxf, kStl };

/// The format that a name's suffix stands for, in small or capital letters.
std::optional<OutlineFormat> OutlineFormatOf(const std::filesystem::path& path);

/// The content of the file; thickness (mm) is that of a solid. Throws FileWriteError as the writer
/// of the format does.
std::string OutlineText(OutlineFormat format, const Shape& shape, double thickness);

struct OutlineFile {
  std::string text;
  double areaChange = 0;  ///< by smoothing, as a part of the area
};

/// The file of a model's shape as it stands. Throws FileWriteError where the model has none or the
/// format cannot hold it.
OutlineFile MakeOutlineFile(OutlineFormat format, const Model& model, bool smooth);

}  // namespace quillane
