#include "export/outline.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace quillane {
namespace {

/// Whether the way from a by b to c is straight on.
bool IsStraight(Point a, Point b, Point c) {
  const double lengths = Length(b - a) * Length(c - b);
  return std::abs(Cross(b - a, c - b)) <= 1E-9 * lengths && Dot(b - a, c - b) > 0;
}

std::vector<Point> Polygon(const Contour& contour, double deviation) {
  std::vector<Point> polygon;
  for (std::size_t k = 0; k < contour.size(); ++k) {
    const auto& [place, arc] = contour[k];
    polygon.push_back(place);
    if (arc == nullptr) continue;
    const Point next = contour[(k + 1) % contour.size()].place;
    std::ranges::copy(ArcPoints(*arc, place, next, deviation), std::back_inserter(polygon));
  }
  return polygon;
}

}  // namespace

std::vector<Contour> Outline(const Shape& shape) {
  std::vector<Contour> outline;
  for (const std::vector<int>& loop : shape.loops) {
    const auto corner = [&loop](std::size_t k) { return loop[k % loop.size()]; };
    const auto at = [&](std::size_t k) { return shape.At(corner(k)); };
    Contour contour;
    const Circle* before = ArcOfEdge(shape, loop.back(), loop.front());
    for (std::size_t k = 0; k < loop.size(); ++k) {
      const Circle* after = ArcOfEdge(shape, corner(k), corner(k + 1));
      const bool goesOn =
          before == after &&
          (after != nullptr || IsStraight(at(k + loop.size() - 1), at(k), at(k + 1)));
      if (!goesOn) contour.push_back({at(k), after});
      before = after;
    }
    if (contour.empty()) contour.push_back({at(0), before});
    outline.push_back(std::move(contour));
  }
  return outline;
}

std::vector<std::vector<Point>> Polygons(const std::vector<Contour>& outline, double deviation) {
  std::vector<std::vector<Point>> polygons(outline.size());
  std::ranges::transform(outline, polygons.begin(), [deviation](const Contour& contour) {
    return Polygon(contour, deviation);
  });
  return polygons;
}

Box Bounds(const std::vector<Contour>& outline) {
  Box box{outline.front().front().place, outline.front().front().place};
  for (const Contour& contour : outline) {
    for (const auto& [p, circle] : contour) {
      box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
      box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
    }
  }
  return box;
}

std::vector<Point> CellPolygon(const Shape& shape, const std::array<int, 4>& cell,
                               double deviation) {
  Contour contour;
  for (std::size_t k = 0; k < 4; ++k) {
    contour.push_back({shape.At(cell[k]), ArcOfEdge(shape, cell[k], cell[(k + 1) % 4])});
  }
  return Polygon(contour, deviation);
}

}  // namespace quillane
