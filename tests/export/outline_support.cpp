#include "export/outline_support.h"

#include <gtest/gtest.h>

#include <QVector3D>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <map>
#include <random>
#include <sstream>

#include "export/outline.h"

namespace quillane::test {
namespace {

/// Returns whether two segments have more in common than one end.
bool Meet(const Segment& s, const Segment& t) {
  const auto [a, b] = s;
  const auto [c, d] = t;
  const auto side = [](Point from, Point to, Point p) { return Cross(to - from, p - from); };
  if (side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0) return true;
  int touching = 0;
  for (const Point& p : {a, b}) touching += Distance(p, c, d) < 1E-6 ? 1 : 0;
  for (const Point& p : {c, d}) touching += Distance(p, a, b) < 1E-6 ? 1 : 0;
  const bool common = Same(a, c) || Same(a, d) || Same(b, c) || Same(b, d);
  return touching > (common ? 2 : 0);
}

}  // namespace

Model Layout(const std::vector<std::string>& rows) {
  const int count = static_cast<int>(rows.size()), columns = static_cast<int>(rows[0].size());
  Model model = Plate(count, columns, 10, kCellEmpty);
  for (int i = 1; i <= count; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const char c = rows[static_cast<std::size_t>(count - i)][static_cast<std::size_t>(j - 1)];
      if (c == '#') model.CellState(i, j) = kCellDesign;
      if (c == 'N') model.CellState(i, j) = kCellNonDesign;
      if (c == 'x') model.CellState(i, j) = kCellCutOut;
    }
  }
  return model;
}

Model RandomLayout(unsigned seed) {
  std::mt19937 random(seed);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * static_cast<double>(random() % 10001) / 10000;
  };
  const int rows = static_cast<int>(between(3, 26)), columns = static_cast<int>(between(3, 26));
  Model model = Plate(rows, columns, 10, kCellEmpty);
  const double a = between(-1, 1), b = between(-1, 1), c = between(-1, 1), d = between(-1, 1);
  const double noise = seed % 3 == 0 ? between(0, 1.5) : 0, level = between(-1, 0.8);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      const double field = std::sin(a * i + b * j) + std::sin(c * i + d * j);
      if (field + between(-noise, noise) > level) model.CellState(i, j) = kCellDesign;
      if (random() % 150 == 0)
        model.CellState(i, j) = random() % 2 == 0 ? kCellNonDesign : kCellCutOut;
    }
  }
  model.CellState(1, 1) = kCellDesign;
  for (int n = 1; n <= model.NodeCount; ++n) {
    if (random() % 80 == 0) model.NodeFreedom(n, 1 + static_cast<int>(random() % 2)) = 1;
    if (random() % 80 == 0) model.NodeLoad(n, 1 + static_cast<int>(random() % 2)) = -5;
  }
  return model;
}

void CutDisc(Model& model, double x, double y, double radius, double aspect) {
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const bool isInside = std::hypot((j - 0.5 - x) / aspect, i - 0.5 - y) < radius;
      if (isInside) model.CellState(i, j) = kCellCutOut;
    }
  }
}

std::vector<double> Numbers(const std::string& text, const std::string& after, char end) {
  const std::size_t at = text.find(after);
  EXPECT_NE(at, std::string::npos) << after;
  const std::size_t begin = at + after.size();
  std::istringstream stream(text.substr(begin, text.find(end, begin) - begin));
  return {std::istream_iterator<double>(stream), {}};
}

std::vector<Segment> Segments(const Shape& shape) {
  std::vector<Segment> segments;
  for (const auto& polygon : Polygons(Outline(shape), 0.01 * shape.cell)) {
    for (Point last = polygon.back(); const Point& p : polygon)
      segments.emplace_back(std::exchange(last, p), p);
  }
  return segments;
}

bool Same(Point a, Point b) { return a.x == b.x && a.y == b.y; }

bool IsInside(Point p, const std::vector<Segment>& outline) {
  bool inside = false;
  for (const auto& [a, b] : outline) {
    if ((a.y > p.y) == (b.y > p.y)) continue;
    if (p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

void ExpectNoneMeet(const std::vector<Segment>& outline) {
  for (auto s = outline.begin(); s != outline.end(); ++s) {
    for (auto t = s + 1; t != outline.end(); ++t) {
      EXPECT_FALSE(Meet(*s, *t)) << s->first.x << " " << s->first.y;
    }
  }
}

void ExpectClosedSolid(const std::string& stl, double volume, double error) {
  using Vertex = std::array<float, 3>;
  ASSERT_EQ((stl.size() - 84) % 50, 0U);
  std::map<std::pair<Vertex, Vertex>, int> edges;  // uses in this direction minus uses in the other
  double enclosed = 0;
  for (std::size_t at = 84; at < stl.size(); at += 50) {
    std::array<Vertex, 4> facet;  // its normal, then its corners
    std::memcpy(facet.data(), stl.data() + at, sizeof facet);
    const auto& [normal, a, b, c] = facet;
    const auto vector = [](const Vertex& v) { return QVector3D(v[0], v[1], v[2]); };
    const QVector3D expected = QVector3D::normal(vector(a), vector(b), vector(c));
    EXPECT_LT((vector(normal) - expected).length(), 1E-3F);
    enclosed += double{a[2] + b[2] + c[2]} / 6 *
                Cross({b[0] - a[0], b[1] - a[1]}, {c[0] - a[0], c[1] - a[1]});
    for (const auto& edge : {std::pair(a, b), std::pair(b, c), std::pair(c, a)}) {
      ++edges[edge];
      --edges[{edge.second, edge.first}];
    }
  }
  for (const auto& [edge, open] : edges) EXPECT_EQ(open, 0);
  EXPECT_NEAR(enclosed / volume, 1, error);
}

}  // namespace quillane::test
