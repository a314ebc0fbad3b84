#include "export/outline_file.h"

#include <QByteArray>
#include <map>

#include "export/dxf.h"
#include "export/smoothing.h"
#include "export/stl.h"
#include "export/svg.h"

namespace quillane {

std::optional<OutlineFormat> OutlineFormatOf(const std::filesystem::path& path) {
  static const std::map<QByteArray, OutlineFormat> kFormats = {
      {".svg", OutlineFormat::kSvg}, {".dxf", OutlineFormat::kDxf}, {".stl", OutlineFormat::kStl}};
  const auto format = kFormats.find(QByteArray::fromStdString(path.extension().string()).toLower());
  return format == kFormats.end() ? std::nullopt : std::optional(format->second);
}

std::string OutlineText(OutlineFormat format, const Shape& shape, double thickness) {
  switch (format) {
    case OutlineFormat::kSvg:
      return SvgText(shape);
    case OutlineFormat::kDxf:
      return DxfText(shape);
    case OutlineFormat::kStl:
      return StlText(shape, thickness);
  }
  return {};
}

OutlineFile MakeOutlineFile(OutlineFormat format, const Model& model, bool smooth) {
  const Shape traced = TraceShape(model);
  const Shape& shape = smooth ? Smoothed(traced, model) : traced;
  return {OutlineText(format, shape, model.Thickness), Area(shape) / Area(traced) - 1};
}

}  // namespace quillane
