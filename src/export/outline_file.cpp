#include "export/outline_file.h"

#include <QByteArray>
#include <cstddef>
#include <map>
#include <set>

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

OutlineFile MakeOutlineFile(OutlineFormat format, const Model& model,
                            std::optional<SmoothEdges> smooth) {
  const Shape traced = TraceShape(model);
  const Shape shape = smooth ? Smoothed(traced, model, *smooth) : traced;
  const std::vector<Contour> outline = Outline(shape);
  OutlineFile file{OutlineText(format, shape, model.Thickness), {}};
  OutlineFigures& figures = file.figures;
  figures.areaChange = Area(shape) / Area(traced) - 1;
  for (const std::vector<int>& loop : traced.loops) {
    ++(LoopArea(traced, loop) > 0 ? figures.pieces : figures.holes);
  }
  figures.contacts = static_cast<int>(CornerContacts(shape).size());
  figures.shortestSegment = ShortestSegment(outline);
  figures.neck = NarrowestNeck(outline, shape.cell);
  std::set<const Circle*> whole;
  for (const Contour& contour : outline) {
    if (contour.size() == 1) whole.insert(contour.front().arc);
  }
  for (const Circle& circle : shape.circles) {
    (whole.contains(&circle) ? figures.circles : figures.arcs).push_back(circle);
  }
  return file;
}

}  // namespace quillane
