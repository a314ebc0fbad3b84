#include "export/svg.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>

#include "model/number_text.h"

namespace quillane {
namespace {

struct Box {
  Point low, high;
};

Box Bounds(const std::vector<std::vector<Point>>& outline) {
  Box box{outline.front().front(), outline.front().front()};
  for (const std::vector<Point>& polygon : outline) {
    for (const Point& p : polygon) {
      box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
      box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
    }
  }
  return box;
}

std::string Pair(double x, double y) { return GeneralText(x) + " " + GeneralText(y); }

}  // namespace

std::string SvgText(const Shape& shape) {
  const std::vector<std::vector<Point>> outline = Outline(shape);
  const Box box = Bounds(outline);
  const Point size = box.high - box.low;
  std::string path;
  for (const std::vector<Point>& polygon : outline) {
    for (const Point& p : polygon) {
      path +=
          (&p == &polygon.front() ? "M " : "L ") + Pair(p.x - box.low.x, box.high.y - p.y) + " ";
    }
    path += "Z ";
  }
  path.pop_back();

  QByteArray text;
  QXmlStreamWriter svg(&text);
  const auto attribute = [&svg](const char* name, const std::string& value) {
    svg.writeAttribute(QString::fromLatin1(name), QString::fromStdString(value));
  };
  svg.setAutoFormatting(true);
  svg.writeStartDocument();
  svg.writeStartElement(QStringLiteral("svg"));
  attribute("xmlns", "http://www.w3.org/2000/svg");
  attribute("width", GeneralText(size.x) + "mm");
  attribute("height", GeneralText(size.y) + "mm");
  attribute("viewBox", "0 0 " + Pair(size.x, size.y));
  svg.writeEmptyElement(QStringLiteral("path"));
  attribute("fill-rule", "evenodd");
  attribute("d", path);
  svg.writeEndDocument();
  return text.toStdString();
}

}  // namespace quillane
