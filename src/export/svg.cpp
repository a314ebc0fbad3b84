// A shape as a drawing for browsers and drawing programs.
#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>
#include <numbers>

#include "export/outline_file.h"
#include "model/number_text.h"

namespace quillane {
namespace {

std::string Pair(double x, double y) { return GeneralText(x) + " " + GeneralText(y); }

/// Writes contours as subpaths. The origin of the drawing is its upper left corner; y points down.
class PathData {
 public:
  explicit PathData(Point origin) : origin_(origin) {}

  std::string Of(const Contour& contour) const {
    std::string data = "M " + Place(contour.front().from) + " ";
    for (const Side& side : contour) {
      if (side.arc != nullptr) {
        data += Arc(*side.arc, side.from, side.to);
      } else if (&side != &contour.back()) {
        data += "L " + Place(side.to) + " ";
      }
    }
    return data + "Z ";
  }

 private:
  std::string Place(Point p) const { return Pair(p.x - origin_.x, origin_.y - p.y); }

  /// Returns the commands of a clockwise arc; a full circle takes two, as the format requires.
  std::string Arc(const Circle& circle, Point from, Point to) const {
    const double angle = ClockwiseAngle(circle, from, to);
    if (angle > 2 * std::numbers::pi - 1E-9) {
      const Point opposite = 2 * circle.centre - from;
      return Arc(circle, from, opposite) + Arc(circle, opposite, to);
    }
    return "A " + Pair(circle.radius, circle.radius) + " 0 " +
           (angle > std::numbers::pi ? "1" : "0") + " 1 " + Place(to) + " ";
  }

  Point origin_;
};

}  // namespace

std::string SvgText(const Shape& shape) {
  const std::vector<Contour> outline = Outline(shape);
  const Box box = Bounds(outline);
  const Point size = box.high - box.low;
  const PathData path({box.low.x, box.high.y});
  std::string data;
  for (const Contour& contour : outline) data += path.Of(contour);
  data.pop_back();

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
  attribute("d", data);
  svg.writeEndDocument();
  return text.toStdString();
}

}  // namespace quillane
