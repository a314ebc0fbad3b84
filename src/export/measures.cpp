#include "export/measures.h"

#include <algorithm>
#include <cfloat>
#include <cstddef>
#include <iterator>

#include "export/segment_grid.h"

namespace quillane {
namespace {

/// Directions closer to a right angle than this are perpendicular; also the tolerance of an empty
/// disc, as a part of its radius.
constexpr double kRightAngle = 1E-6;
/// How far chords may lie from their arcs, in edges of a cell.
constexpr double kDeviation = 0.002;

Point Unit(Point p) { return 1 / Length(p) * p; }

/// Finds discs between two places of the edge that face each other through the material.
class Necks {
 public:
  Necks(const std::vector<std::vector<Point>>& polygons, double reach)
      : grid_(polygons, reach), reach_(reach) {
    for (const Segment& s : grid_.Segments()) directions_.push_back(Unit(s.b - s.a));
  }

  /// Returns the narrowest neck of at most `reach`.
  std::optional<Neck> Narrowest() {
    for (int index = 0; index < std::ssize(grid_.Segments()); ++index) Face(index);
    std::ranges::sort(found_, {}, &Neck::width);
    const auto neck = std::ranges::find_if(found_, [this](const Neck& n) { return IsEmpty(n); });
    return neck == found_.end() ? std::nullopt : std::optional(*neck);
  }

 private:
  using Segment = SegmentGrid::Segment;

  const Segment& At(int index) const { return grid_.At(index); }
  Point Direction(int index) const { return directions_[static_cast<std::size_t>(index)]; }

  /// Returns whether the vertex where a segment begins is not convex, and the direction u leads
  /// from there into the material, away from both segments at the vertex.
  bool Leaves(int index, Point u) const {
    const Point back = -1.0 * Direction(At(index).before), on = Direction(index);
    return Cross(on, back) <= kRightAngle && Dot(u, back) <= kRightAngle &&
           Dot(u, on) <= kRightAngle && Cross(on - back, u) > 0;
  }

  /// Collects the discs at the vertex where a segment begins, and those between parallels of its
  /// two segments.
  void Face(int first) {
    const Segment& s = At(first);
    grid_.ForEachNear(s.a, reach_, [&](int index) {
      if (index == first || index == s.before) return;
      FaceInParallel(first, index);
      FaceInParallel(s.before, index);
      const Segment& t = At(index);
      const Point along = t.b - t.a;
      const double part = Dot(s.a - t.a, along) / Dot(along, along);
      if (part >= 1) return;  // the end is the next segment's beginning
      const Point place = t.a + std::max(0.0, part) * along;
      const double width = Length(place - s.a);
      if (!(width > 0 && width <= reach_)) return;
      const Point u = 1 / width * (place - s.a);
      const bool meets = part <= 0 ? Leaves(index, -1.0 * u) : Cross(along, s.a - t.a) > 0;
      if (meets && Leaves(first, u)) found_.push_back({width, 0.5 * (place + s.a)});
    });
  }

  /// Collects the disc in a member with parallel sides, in the middle of where they overlap.
  void FaceInParallel(int first, int second) {
    const Segment &s = At(first), &t = At(second);
    const Point u = Direction(first), v = Direction(second);
    const double width = Cross(u, t.a - s.a);
    if (std::abs(Cross(u, v)) > kRightAngle || Dot(u, v) > 0 || !(width > 0)) return;
    const double begin = std::max(0.0, Dot(t.b - s.a, u));
    const double end = std::min(Length(s.b - s.a), Dot(t.a - s.a, u));
    if (begin >= end || width > reach_) return;
    found_.push_back({width, s.a + (begin + end) / 2 * u + width / 2 * Point{-u.y, u.x}});
  }

  /// Returns whether no part of the edge lies in the disc.
  bool IsEmpty(const Neck& neck) const {
    bool isEmpty = true;
    grid_.ForEachNear(neck.middle, neck.width / 2, [&](int index) {
      const Segment& t = At(index);
      isEmpty = isEmpty && Distance(neck.middle, t.a, t.b) >= neck.width / 2 * (1 - kRightAngle);
    });
    return isEmpty;
  }

  SegmentGrid grid_;
  double reach_;
  std::vector<Point> directions_;  ///< unit vectors, by segment
  std::vector<Neck> found_;
};

}  // namespace

double ShortestSegment(const std::vector<Contour>& outline) {
  double shortest = DBL_MAX;
  for (const Contour& contour : outline) {
    for (const auto& [from, to, arc] : contour) {
      const double length =
          arc == nullptr ? Length(to - from) : arc->radius * ClockwiseAngle(*arc, from, to);
      shortest = std::min(shortest, length);
    }
  }
  return shortest;
}

std::optional<Neck> NarrowestNeck(const std::vector<Contour>& outline, double cell) {
  const auto polygons = Polygons(outline, kDeviation * cell);
  const auto [low, high] = Bounds(outline);
  for (double reach = cell / 4;; reach *= 2) {
    if (const std::optional<Neck> neck = Necks(polygons, reach).Narrowest()) return neck;
    if (reach > Length(high - low)) return std::nullopt;
  }
}

}  // namespace quillane
