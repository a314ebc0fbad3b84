#include "export/smoothing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace quillane {
namespace {

/// The filter: pairs of a shrinking and a growing pass, which leave waves longer than about 20
/// edges.
constexpr int kFilterPairs = 300;
constexpr double kShrink = 0.66, kGrow = -0.68;
constexpr int kAreaRounds = 4;
/// How far straightening may move a corner, in edges of a cell; the filter leaves room for it.
constexpr double kStraightness = 0.02;
constexpr double kFilterReach = kSmoothingReach - kStraightness;

/// By corner: whether it has to stay.
std::vector<char> HeldCorners(const Shape& shape, const Model& model) {
  const int stride = model.CellColumnCount + 1;
  const auto designable = [&model](int i, int j) {
    return i >= 1 && i <= model.CellRowCount && j >= 1 && j <= model.CellColumnCount &&
           (model.CellState(i, j) == kCellDesign || model.CellState(i, j) == kCellEmpty);
  };
  std::vector<char> held(shape.corners.size()), visited(shape.corners.size());
  for (const std::vector<int>& loop : shape.loops) {
    for (const int n : loop) {
      const int i = (n - 1) / stride, j = (n - 1) % stride;  // of the cell to the lower left
      const bool inside = designable(i, j) && designable(i, j + 1) && designable(i + 1, j) &&
                          designable(i + 1, j + 1);
      const bool used = IsHeld(model, n) || IsLoaded(model, n);
      const auto index = static_cast<std::size_t>(n);
      if (!inside || used || visited[index] != 0) held[index] = 1;
      visited[index] = 1;
    }
  }
  return held;
}

/// The corners of cells with two opposite sides on the edge, in the order first side, other side.
std::vector<std::array<int, 4>> ThinCells(const Shape& shape, const Model& model) {
  const int stride = model.CellColumnCount + 1;
  std::vector<std::array<int, 4>> thin;
  for (const auto& [a, b, c, d] : shape.cells) {
    const int i = (a - 1) / stride + 1, j = (a - 1) % stride + 1;
    if (!HasMaterial(model, i - 1, j) && !HasMaterial(model, i + 1, j))
      thin.push_back({a, b, c, d});
    if (!HasMaterial(model, i, j - 1) && !HasMaterial(model, i, j + 1))
      thin.push_back({b, c, d, a});
  }
  return thin;
}

class Smoother {
 public:
  Smoother(const Shape& shape, const Model& model)
      : home_(shape),
        shape_(shape),
        held_(HeldCorners(shape, model)),
        thin_(ThinCells(shape, model)),
        cell_(double{model.ElementSize}),
        moved_(shape.corners.size()) {}

  /// Where the area has changed too much, all corners go back alike until it has not.
  Shape Run() {
    for (const std::vector<int>& loop : shape_.loops) {
      Filter(loop);
      for (int round = 0; round < kAreaRounds; ++round) RestoreArea(loop);
    }
    WidenThinCells();
    const std::vector<Point> smooth = shape_.corners;
    const double area = Area(home_);
    for (double part = 1;; part = part > 0.01 ? part / 1.2 : 0) {
      for (std::size_t n = 0; n < smooth.size(); ++n) {
        shape_.corners[n] = home_.corners[n] + part * (smooth[n] - home_.corners[n]);
      }
      for (const std::vector<int>& loop : shape_.loops) Straighten(loop);
      if (part == 0 || std::abs(Area(shape_) - area) <= kLargestAreaChange * area) return shape_;
    }
  }

 private:
  static std::size_t Index(int corner) { return static_cast<std::size_t>(corner); }
  Point& At(int corner) { return shape_.corners[Index(corner)]; }

  /// Moves every free corner of the loop at once to where target(before, here, after) wants it, but
  /// not out of reach.
  template <class Target>
  void MoveAll(const std::vector<int>& loop, const Target& target) {
    const double reach = kFilterReach * cell_;
    for (std::size_t k = 0; k < loop.size(); ++k) {
      const std::size_t n = Index(loop[k]);
      moved_[n] = At(loop[k]);
      if (held_[n] != 0) continue;
      const Point& before = At(loop[k == 0 ? loop.size() - 1 : k - 1]);
      const Point& after = At(loop[k + 1 == loop.size() ? 0 : k + 1]);
      const Point there = target(before, moved_[n], after), home = home_.corners[n];
      moved_[n] = {std::clamp(there.x, home.x - reach, home.x + reach),
                   std::clamp(there.y, home.y - reach, home.y + reach)};
    }
    for (const int corner : loop) At(corner) = moved_[Index(corner)];
  }

  void Filter(const std::vector<int>& loop) {
    for (int pass = 0; pass < 2 * kFilterPairs; ++pass) {
      const double part = pass % 2 == 0 ? kShrink : kGrow;
      MoveAll(loop, [part](Point before, Point here, Point after) {
        return here + part * (0.5 * (before + after) - here);
      });
    }
  }

  /// Moves the free corners outward alike, by what brings the loop's area back.
  void RestoreArea(const std::vector<int>& loop) {
    double length = 0;
    for (std::size_t k = 0; k < loop.size(); ++k) {
      if (held_[Index(loop[(k + 1) % loop.size()])] != 0) continue;
      length += Length(At(loop[(k + 2) % loop.size()]) - At(loop[k])) / 2;
    }
    if (length == 0) return;
    const double outward = (LoopArea(home_, loop) - LoopArea(shape_, loop)) / length;
    MoveAll(loop, [outward](Point before, Point here, Point after) {
      const Point along = after - before;
      const double size = Length(along);
      return size > 0 ? here + outward / size * Point{along.y, -along.x} : here;
    });
  }

  /// Takes back half of the movement where the sides of a thin cell have come too close. What
  /// remains of a movement then is too small to be a cause, so this ends.
  void WidenThinCells() {
    for (bool narrow = true; narrow;) {
      narrow = false;
      for (const std::array<int, 4>& cell : thin_) {
        const Point a = At(cell[0]), b = At(cell[1]), c = At(cell[2]), d = At(cell[3]);
        const double width =
            std::min({Distance(a, c, d), Distance(b, c, d), Distance(c, a, b), Distance(d, a, b)});
        if (width >= (kThinnestMember + 2 * kStraightness) * cell_) continue;
        narrow = true;
        for (const int corner : cell)
          At(corner) = 0.5 * (At(corner) + home_.corners[Index(corner)]);
      }
    }
  }

  /// Lays the corners of nearly straight pieces of the loop on a straight line.
  void Straighten(const std::vector<int>& loop) {
    std::vector<std::size_t> ends;  // of the pieces between what is held
    for (std::size_t k = 0; k < loop.size(); ++k) {
      if (held_[Index(loop[k])] != 0) ends.push_back(k);
    }
    if (ends.empty()) ends.push_back(0);
    if (ends.size() == 1) ends.push_back(ends.front() + loop.size() / 2);
    std::vector<std::pair<std::size_t, std::size_t>> pieces;
    for (std::size_t k = 0; k + 1 < ends.size(); ++k) pieces.emplace_back(ends[k], ends[k + 1]);
    pieces.emplace_back(ends.back(), ends.front() + loop.size());
    while (!pieces.empty()) {
      const auto [first, last] = pieces.back();
      pieces.pop_back();
      const std::size_t split = StraightenPiece(loop, first, last);
      if (split == last) continue;
      pieces.emplace_back(first, split);
      pieces.emplace_back(split, last);
    }
  }

  /// Lays corners first to last of the loop on the line between these two and returns last; where
  /// one of them would have to move too far, returns the one farthest from the line instead.
  std::size_t StraightenPiece(const std::vector<int>& loop, std::size_t first, std::size_t last) {
    const auto at = [&](std::size_t k) -> Point& { return At(loop[k % loop.size()]); };
    const Point a = at(first), b = at(last);
    double length = 0, along = 0, farthest = -1;
    for (std::size_t k = first; k < last; ++k) length += Length(at(k + 1) - at(k));
    std::size_t split = last;
    bool straight = true;
    for (std::size_t k = first + 1; k < last; ++k) {
      along += Length(at(k) - at(k - 1));
      Point& place = moved_[Index(loop[k % loop.size()])];
      place = a + along / length * (b - a);
      straight = straight && Length(place - at(k)) <= kStraightness * cell_;
      const double distance = Distance(at(k), a, b);
      if (distance > farthest) split = k;
      farthest = std::max(distance, farthest);
    }
    if (!straight) return split;
    for (std::size_t k = first + 1; k < last; ++k) at(k) = moved_[Index(loop[k % loop.size()])];
    return last;
  }

  const Shape& home_;
  Shape shape_;
  const std::vector<char> held_;
  const std::vector<std::array<int, 4>> thin_;
  const double cell_;
  std::vector<Point> moved_;  ///< work space, by corner
};

}  // namespace

Shape Smoothed(const Shape& shape, const Model& model) { return Smoother(shape, model).Run(); }

}  // namespace quillane
