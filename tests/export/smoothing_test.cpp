// What smoothing promises, on layouts that nobody drew.
#include "export/smoothing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "export/layouts.h"

namespace quillane {
namespace {

using Segment = std::pair<Point, Point>;

bool Same(Point a, Point b) { return a.x == b.x && a.y == b.y; }

/// Whether two segments have more in common than one end.
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

/// Whether p lies in the material, by the crossings of a ray to the right.
bool IsInside(Point p, const std::vector<Segment>& outline) {
  bool inside = false;
  for (const auto& [a, b] : outline) {
    if ((a.y > p.y) == (b.y > p.y)) continue;
    if (p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

/// Whether a corner of the grid is at the edge of the domain or of a cell that is neither design
/// material nor empty, or has a support or load.
bool HasToStay(const Model& model, int n) {
  const int row = (n - 1) / (model.CellColumnCount + 1),
            column = (n - 1) % (model.CellColumnCount + 1);
  for (const int i : {row, row + 1}) {
    for (const int j : {column, column + 1}) {
      if (i < 1 || i > model.CellRowCount || j < 1 || j > model.CellColumnCount) return true;
      if (model.CellState(i, j) != kCellDesign && model.CellState(i, j) != kCellEmpty) return true;
    }
  }
  return model.NodeFreedom(n, 1) != 0 || model.NodeFreedom(n, 2) != 0 ||
         model.NodeLoad(n, 1) != 0 || model.NodeLoad(n, 2) != 0;
}

void ExpectPromisesKept(const Model& model) {
  const Shape shape = TraceShape(model), smooth = Smoothed(shape, model);
  EXPECT_LT(std::abs(Area(smooth) - Area(shape)), 0.01 * Area(shape));
  ASSERT_EQ(smooth.loops, shape.loops);
  for (const auto& loop : shape.loops) {
    EXPECT_GT(LoopArea(smooth, loop) / LoopArea(shape, loop), 0);
    for (const int n : loop) {
      const auto k = static_cast<std::size_t>(n);
      EXPECT_TRUE(!HasToStay(model, n) || Same(smooth.corners[k], shape.corners[k])) << n;
    }
  }
  for (const auto& [a, b, c, d] : shape.cells) {
    const int i = (a - 1) / (model.CellColumnCount + 1) + 1,
              j = a - (i - 1) * (model.CellColumnCount + 1);
    const auto at = [&](int n) { return smooth.corners[static_cast<std::size_t>(n)]; };
    const auto gap = [&](int p, int q, int r, int s) {
      return std::min(Distance(at(p), at(r), at(s)), Distance(at(r), at(p), at(q)));
    };
    EXPECT_TRUE(gap(d, a, b, c) >= 5 || HasMaterial(model, i, j - 1) ||
                HasMaterial(model, i, j + 1));
    EXPECT_TRUE(gap(a, b, c, d) >= 5 || HasMaterial(model, i - 1, j) ||
                HasMaterial(model, i + 1, j));
  }
  std::vector<Segment> outline;
  for (const auto& polygon : Outline(smooth)) {
    for (Point last = polygon.back(); const Point& p : polygon)
      outline.emplace_back(std::exchange(last, p), p);
  }
  for (auto s = outline.begin(); s != outline.end(); ++s) {
    for (auto t = s + 1; t != outline.end(); ++t) {
      EXPECT_FALSE(Meet(*s, *t)) << s->first.x << " " << s->first.y;
    }
  }
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      EXPECT_EQ(IsInside({10 * (j - 0.5), 10 * (i - 0.5)}, outline), HasMaterial(model, i, j));
    }
  }
}

TEST(Smoothing, KeepsItsPromisesOnRandomLayouts) {
  for (unsigned seed = 1; seed <= 200 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    ExpectPromisesKept(test::RandomLayout(seed));
  }
}

TEST(Smoothing, MakesStaircasesStraight) {
  for (const int run : {1, 2, 3, 5}) {  // columns a step
    SCOPED_TRACE(run);
    constexpr int kColumns = 40, kHeight = 4;
    Model model = test::Plate(kColumns / run + kHeight, kColumns, 10, kCellEmpty);
    for (int j = 1; j <= kColumns; ++j) {
      for (int i = 1; i <= kHeight; ++i) model.CellState(i + (j - 1) / run, j) = kCellDesign;
    }
    const Shape smooth = Smoothed(TraceShape(model), model);
    std::vector<double> heights;  // over the slanted line through the origin, far from both ends
    for (const int n : smooth.loops.at(0)) {
      const Point& p = smooth.corners[static_cast<std::size_t>(n)];
      if (p.x > 100 && p.x < 300) heights.push_back(p.y - p.x / run);
    }
    const auto upper = std::ranges::partition(heights, [](double h) { return h < 20; });
    const auto [low, high] = std::minmax_element(heights.begin(), upper.begin());
    const auto [low2, high2] = std::ranges::minmax_element(upper);
    EXPECT_LT(*high - *low, 1);
    EXPECT_LT(*high2 - *low2, 1);
    EXPECT_NEAR(*low2 - *low, 10 * kHeight, 1);
  }
}

TEST(Smoothing, LeavesHolesAndIslandsTheirArea) {
  for (const int size : {1, 2, 3, 6}) {
    for (const Integer state : {kCellEmpty, kCellDesign}) {
      Model model = test::Plate(12, 12, 10, state == kCellEmpty ? kCellDesign : kCellEmpty);
      for (int i = 0; i < size * size; ++i) model.CellState(4 + i / size, 4 + i % size) = state;
      const Shape shape = TraceShape(model), smooth = Smoothed(shape, model);
      EXPECT_NEAR(LoopArea(smooth, shape.loops.back()) / LoopArea(shape, shape.loops.back()), 1,
                  0.01);
    }
  }
}

}  // namespace
}  // namespace quillane
