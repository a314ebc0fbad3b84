#include "export/outline.h"

#include <cstddef>
#include <utility>

namespace quillane {
namespace {

/// Whether the way from a by b to c is straight on.
bool IsStraight(Point a, Point b, Point c) {
  const double lengths = Length(b - a) * Length(c - b);
  return std::abs(Cross(b - a, c - b)) <= 1E-9 * lengths && Dot(b - a, c - b) > 0;
}

void AppendArc(std::vector<Point>& polygon, const Circle& circle, Point from, Point to,
               double deviation) {
  const std::vector<Point> between = ArcPoints(circle, from, to, deviation);
  polygon.insert(polygon.end(), between.begin(), between.end());
}

}  // namespace

std::vector<Contour> Outline(const Shape& shape) {
  std::vector<Contour> outline;
  for (const std::vector<int>& loop : shape.loops) {
    const auto corner = [&loop](std::size_t k) { return loop[k % loop.size()]; };
    const auto at = [&](std::size_t k) {
      return shape.corners[static_cast<std::size_t>(corner(k))];
    };
    Contour contour;
    int before = CircleOfEdge(shape, loop.back(), loop.front());
    for (std::size_t k = 0; k < loop.size(); ++k) {
      const int after = CircleOfEdge(shape, corner(k), corner(k + 1));
      const bool goesOn =
          before == after &&
          (after != kStraight || IsStraight(at(k + loop.size() - 1), at(k), at(k + 1)));
      if (!goesOn) contour.push_back({at(k), after});
      before = after;
    }
    if (contour.empty()) contour.push_back({at(0), before});
    outline.push_back(std::move(contour));
  }
  return outline;
}

std::vector<std::vector<Point>> Polygons(const Shape& shape, const std::vector<Contour>& outline,
                                         double deviation) {
  std::vector<std::vector<Point>> polygons;
  for (const Contour& contour : outline) {
    std::vector<Point> polygon;
    for (std::size_t k = 0; k < contour.size(); ++k) {
      const auto& [place, circle] = contour[k];
      polygon.push_back(place);
      if (circle == kStraight) continue;
      AppendArc(polygon, shape.circles[static_cast<std::size_t>(circle)], place,
                contour[(k + 1) % contour.size()].place, deviation);
    }
    polygons.push_back(std::move(polygon));
  }
  return polygons;
}

std::vector<Point> CellPolygon(const Shape& shape, const std::array<int, 4>& cell,
                               double deviation) {
  std::vector<Point> polygon;
  for (std::size_t k = 0; k < 4; ++k) {
    const int corner = cell[k], next = cell[(k + 1) % 4];
    const Point here = shape.corners[static_cast<std::size_t>(corner)];
    polygon.push_back(here);
    const int circle = CircleOfEdge(shape, corner, next);
    if (circle == kStraight) continue;
    AppendArc(polygon, shape.circles[static_cast<std::size_t>(circle)], here,
              shape.corners[static_cast<std::size_t>(next)], deviation);
  }
  return polygon;
}

}  // namespace quillane
