#include "export/segment_grid.h"

namespace quillane {

SegmentGrid::SegmentGrid(const std::vector<std::vector<Point>>& polygons, double size)
    : size_(size), origin_(polygons.front().front()) {
  for (const std::vector<Point>& polygon : polygons) {
    int before = static_cast<int>(segments_.size() + polygon.size()) - 1;
    for (std::size_t k = 0; k < polygon.size(); ++k) {
      segments_.push_back({polygon[k], polygon[(k + 1) % polygon.size()], before});
      before = static_cast<int>(segments_.size()) - 1;
    }
  }
  for (int index = 0; const auto& [a, b, before] : segments_) {
    const int parts = static_cast<int>(Length(b - a) / size_) + 1;
    for (int part = 0; part < parts; ++part) {  // each crosses four buckets at most
      const Point p = a + static_cast<double>(part) / parts * (b - a);
      const Point q = a + static_cast<double>(part + 1) / parts * (b - a);
      const Point low{std::min(p.x, q.x), std::min(p.y, q.y)};
      const Point high{std::max(p.x, q.x), std::max(p.y, q.y)};
      ForEachKey(low, high, [&](std::int64_t key) {
        std::vector<int>& bucket = buckets_[key];
        if (bucket.empty() || bucket.back() != index) bucket.push_back(index);
      });
    }
    ++index;
  }
}

}  // namespace quillane
