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

}  // namespace quillane
