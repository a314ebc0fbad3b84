// Finds segments that lie near each other.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "export/point.h"

namespace quillane {

/// Segments of closed polygons, sorted into square buckets.
class SegmentGrid {
 public:
  struct Segment {
    Point a, b;
    int before = 0;  ///< index of the segment before it in the polygon
  };

  /// size: edge of a bucket, mm. There is at least one polygon.
  SegmentGrid(const std::vector<std::vector<Point>>& polygons, double size);

  const std::vector<Segment>& Segments() const { return segments_; }
  const Segment& At(int index) const { return segments_[static_cast<std::size_t>(index)]; }

  /// Calls visit(index) for every segment that comes within `reach` (mm) of p, and for some others;
  /// for one segment possibly more than once.
  template <class Visit>
  void ForEachNear(Point p, double reach, const Visit& visit) const {
    ForEachKey({p.x - reach, p.y - reach}, {p.x + reach, p.y + reach}, [&](std::int64_t key) {
      const auto bucket = buckets_.find(key);
      if (bucket == buckets_.end()) return;
      for (const int index : bucket->second) visit(index);
    });
  }

 private:
  /// Calls use(key) for the key of every bucket in a rectangle. Buckets are counted from the first
  /// vertex, so that positions far from the origin do not overflow.
  template <class Use>
  void ForEachKey(Point low, Point high, const Use& use) const {
    const auto count = [this](double length) {
      return static_cast<std::int64_t>(std::floor(length / size_));
    };
    const std::int64_t top = count(high.y - origin_.y), right = count(high.x - origin_.x);
    for (std::int64_t i = count(low.y - origin_.y); i <= top; ++i) {
      for (std::int64_t j = count(low.x - origin_.x); j <= right; ++j) use((i << 32) + j);
    }
  }

  double size_;
  Point origin_;
  std::vector<Segment> segments_;
  std::unordered_map<std::int64_t, std::vector<int>> buckets_;  ///< indices of segments
};

}  // namespace quillane
