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

  /// size: edge of a bucket, mm. There is at least one polygon.
  SegmentGrid(const std::vector<std::vector<Point>>& polygons, double size);

  const std::vector<Segment>& Segments() const { return segments_; }

  /// Calls visit(index) for every segment that comes within `reach` (mm) of p, and for some others;
  /// for one segment possibly more than once.
  template <class Visit>
  void ForEachNear(Point p, double reach, const Visit& visit) const {
    const Bucket low = BucketOf({p.x - reach, p.y - reach});
    const Bucket high = BucketOf({p.x + reach, p.y + reach});
    for (std::int64_t i = low.row; i <= high.row; ++i) {
      for (std::int64_t j = low.column; j <= high.column; ++j) {
        const auto bucket = buckets_.find(Key(i, j));
        if (bucket == buckets_.end()) continue;
        for (const int index : bucket->second) visit(index);
      }
    }
  }

 private:
  struct Bucket {
    std::int64_t row, column;
  };

  /// Counts from the first vertex, so that places far from the origin do not overflow.
  Bucket BucketOf(Point p) const {
    return {static_cast<std::int64_t>(std::floor((p.y - origin_.y) / size_)),
            static_cast<std::int64_t>(std::floor((p.x - origin_.x) / size_))};
  }
  static std::int64_t Key(std::int64_t i, std::int64_t j) { return (i << 32) + j; }

  double size_;
  Point origin_;
  std::vector<Segment> segments_;
  std::unordered_map<std::int64_t, std::vector<int>> buckets_;
};

}  // namespace quillane
