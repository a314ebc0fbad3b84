#include "export/outline.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace quillane {
namespace {

/// Returns whether the way from a through b to c is straight.
bool IsStraight(Point a, Point b, Point c) {
  const double lengths = Length(b - a) * Length(c - b);
  return std::abs(Cross(b - a, c - b)) <= 1E-9 * lengths && Dot(b - a, c - b) > 0;
}

std::vector<Point> Polygon(const Contour& contour, double deviation) {
  std::vector<Point> polygon;
  for (const auto& [from, to, arc] : contour) {
    polygon.push_back(from);
    if (arc == nullptr) continue;
    std::ranges::copy(ArcPoints(*arc, from, to, deviation), std::back_inserter(polygon));
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
      if (!goesOn) contour.push_back({at(k), {}, after});
      before = after;
    }
    if (contour.empty()) contour.push_back({at(0), {}, before});
    for (std::size_t k = 0; k < contour.size(); ++k) {
      contour[k].to = contour[(k + 1) % contour.size()].from;
    }
    outline.push_back(std::move(contour));
  }
  return outline;
}

std::vector<std::vector<Point>> Polygons(const std::vector<Contour>& outline, double deviation) {
  std::vector<std::vector<Point>> polygons;
  polygons.reserve(outline.size());
  for (const Contour& contour : outline) polygons.push_back(Polygon(contour, deviation));
  return polygons;
}

Box Bounds(const std::vector<Contour>& outline) {
  const Point first = outline.front().front().from;
  Box box{first, first};
  for (const Contour& contour : outline) {
    for (const auto& [p, to, arc] : contour) {
      box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
      box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
    }
  }
  return box;
}

std::vector<Point> CellPolygon(const Shape& shape, const Cell& cell, double deviation) {
  Contour contour;
  for (std::size_t k = 0; k < 4; ++k) {
    const int from = cell[k], to = cell[(k + 1) % 4];
    contour.push_back({shape.At(from), shape.At(to), ArcOfEdge(shape, from, to)});
  }
  return Polygon(contour, deviation);
}

}  // namespace quillane
