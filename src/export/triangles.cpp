#include "export/triangles.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace quillane {
namespace {

using Triangle = std::array<Point, 3>;

/// The least fatness of an ear.
constexpr double kLeastFatness = 1E-4;

bool IsInOrOn(Point p, const Triangle& t) {
  return Cross(t[1] - t[0], p - t[0]) >= 0 && Cross(t[2] - t[1], p - t[1]) >= 0 &&
         Cross(t[0] - t[2], p - t[2]) >= 0;
}

/// Returns twice the area over the square of the longest side, negative if it is clockwise.
double Fatness(const Triangle& t) {
  const Point a = t[1] - t[0], b = t[2] - t[1], c = t[0] - t[2];
  return Cross(a, b) / std::max({Dot(a, a), Dot(b, b), Dot(c, c)});
}

/// Returns the index of the vertex whose triangle with its neighbours is the fattest of those that
/// hold no other vertex; nothing if all are too thin.
std::optional<std::size_t> Ear(const std::vector<Point>& polygon) {
  const std::size_t count = polygon.size();
  std::optional<std::size_t> ear;
  double fattest = kLeastFatness;
  for (std::size_t k = 0; k < count; ++k) {
    const Triangle t{polygon[(k + count - 1) % count], polygon[k], polygon[(k + 1) % count]};
    if (Fatness(t) <= fattest) continue;
    bool isEar = true;
    for (std::size_t other = k + 2; isEar && other < k + count - 1; ++other) {
      isEar = !IsInOrOn(polygon[other % count], t);
    }
    if (!isEar) continue;
    ear = k;
    fattest = Fatness(t);
  }
  return ear;
}

}  // namespace

std::vector<Triangle> Triangles(std::vector<Point> polygon) {
  std::vector<Triangle> triangles;
  while (polygon.size() >= 3) {
    const std::optional<std::size_t> ear = Ear(polygon);
    if (!ear) return {};
    const std::size_t count = polygon.size(), k = *ear;
    triangles.push_back({polygon[(k + count - 1) % count], polygon[k], polygon[(k + 1) % count]});
    polygon.erase(polygon.begin() + static_cast<std::ptrdiff_t>(k));
  }
  return triangles;
}

}  // namespace quillane
