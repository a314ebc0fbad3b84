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
    int before = 0, after = 0;  ///< indices of the neighbours in the polygon
  };

  /// size: edge of a bucket, mm.
  SegmentGrid(const std::vector<std::vector<Point>>& polygons, double size);

  const std::vector<Segment>& Segments() const { return segments_; }

  /// Calls visit(index) for every segment that comes within `reach` (mm) of p, and for some others;
  /// for one segment possibly more than once.
  template <class Visit>
  void ForEachNear(Point p, double reach, const Visit& visit) const {
    for (std::int64_t i = Row(p.y - reach); i <= Row(p.y + reach); ++i) {
      for (std::int64_t j = Row(p.x - reach); j <= Row(p.x + reach); ++j) {
        const auto bucket = buckets_.find(Key(i, j));
        if (bucket == buckets_.end()) continue;
        for (const int index : bucket->second) visit(index);
      }
    }
  }

 private:
  std::int64_t Row(double place) const {
    return static_cast<std::int64_t>(std::floor(place / size_));
  }
  static std::int64_t Key(std::int64_t i, std::int64_t j) { return (i << 32) + j; }

  double size_;
  std::vector<Segment> segments_;
  std::unordered_map<std::int64_t, std::vector<int>> buckets_;
};

}  // namespace quillane
