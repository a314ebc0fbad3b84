#include "export/segment_grid.h"

#include <cstddef>

namespace quillane {

SegmentGrid::SegmentGrid(const std::vector<std::vector<Point>>& polygons, double size)
    : size_(size), origin_(polygons.front().front()) {
  for (const std::vector<Point>& polygon : polygons) {
    const int first = static_cast<int>(segments_.size()), count = static_cast<int>(polygon.size());
    for (int k = 0; k < count; ++k) {
      const int next = (k + 1) % count;
      segments_.push_back({polygon[static_cast<std::size_t>(k)],
                           polygon[static_cast<std::size_t>(next)], first + (k + count - 1) % count,
                           first + next});
    }
  }
  for (std::size_t index = 0; index < segments_.size(); ++index) {
    const auto& [a, b, before, after] = segments_[index];
    const int parts = static_cast<int>(Length(b - a) / size_) + 1;
    for (int part = 0; part < parts; ++part) {  // each crosses four buckets at most
      const Point p = a + static_cast<double>(part) / parts * (b - a);
      const Point q = a + static_cast<double>(part + 1) / parts * (b - a);
      const Bucket low = BucketOf({std::min(p.x, q.x), std::min(p.y, q.y)});
      const Bucket high = BucketOf({std::max(p.x, q.x), std::max(p.y, q.y)});
      for (std::int64_t i = low.row; i <= high.row; ++i) {
        for (std::int64_t j = low.column; j <= high.column; ++j) {
          std::vector<int>& bucket = buckets_[Key(i, j)];
          if (bucket.empty() || bucket.back() != static_cast<int>(index))
            bucket.push_back(static_cast<int>(index));
        }
      }
    }
  }
}

}  // namespace quillane
