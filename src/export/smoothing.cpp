#include "export/smoothing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "export/cut_out_circles.h"
#include "export/rounding.h"
#include "model/regular_grid.h"

namespace quillane {
namespace {

/// The filter: pairs of a shrinking and a growing pass, which keep waves longer than about 20
/// edges.
constexpr int kFilterPairs = 300;
constexpr double kShrink = 0.66, kGrow = -0.68;
constexpr int kAreaRounds = 4;
/// The farthest that straightening moves a corner, in edges of a cell; the filter leaves room for
/// it.
constexpr double kStraightness = 0.02;
constexpr double kFilterReach = kSmoothingReach - kStraightness;
/// A movement that counts, in edges of a cell.
constexpr double kLeastMovement = 0.001;

/// Returns for each corner whether it has to stay.
std::vector<char> HeldCorners(const Shape& shape, const Model& model, SmoothEdges edges) {
  const auto designable = [&model, edges](int i, int j) {
    if (!IsCell(model, i, j)) return false;
    const Integer state = model.CellState(i, j);
    return edges == SmoothEdges::kAll || state == kCellDesign || state == kCellEmpty;
  };
  std::vector<char> held(shape.corners.size()), visited(shape.corners.size());
  for (const std::vector<int>& loop : shape.loops) {
    for (const int n : loop) {
      const auto [i, j] = CornerOfNode(model, n);
      const bool inside = designable(i, j) && designable(i, j - 1) && designable(i - 1, j) &&
                          designable(i - 1, j - 1);
      const bool used = IsHeld(model, n) || IsLoaded(model, n);
      const auto index = static_cast<std::size_t>(n);
      if (!inside || used || visited[index] != 0) held[index] = 1;
      visited[index] = 1;
    }
  }
  for (const auto& [edge, circle] : shape.arcs) {
    for (const int n : {edge.first, edge.second}) held[static_cast<std::size_t>(n)] = 1;
  }
  return held;
}

class Smoother {
 public:
  Smoother(const Shape& shape, const Model& model, SmoothEdges edges)
      : home_(shape),
        shape_(shape),
        held_(HeldCorners(shape, model, edges)),
        thin_(ThinCells(shape, model)),
        cell_(shape.cell),
        moved_(shape.corners.size()) {}

  /// Smooths. If the area changes too much, all corners go back by the same share until it does
  /// not.
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

  /// Moves every free corner of the loop at the same time to target(before, here, after), but not
  /// out of reach.
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

  /// Moves the free corners outward by one distance that restores the loop's area.
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

  /// Halves the movement of the corners of thin cells whose sides are too close, until they are not
  /// or the movement is negligible.
  void WidenThinCells() {
    for (bool narrow = true; narrow;) {
      narrow = false;
      for (const std::array<int, 4>& cell : thin_) {
        const double least = (kThinnestMember + 2 * kStraightness) * cell_;
        if (ThinCellWidth(shape_, cell) >= least || !HasMoved(cell)) continue;
        narrow = true;
        for (const int corner : cell)
          At(corner) = 0.5 * (At(corner) + home_.corners[Index(corner)]);
      }
    }
  }

  bool HasMoved(const std::array<int, 4>& cell) {
    return std::ranges::any_of(cell, [this](int corner) {
      return Length(At(corner) - home_.corners[Index(corner)]) > kLeastMovement * cell_;
    });
  }

  /// Moves the corners of nearly straight pieces of the loop onto straight lines.
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

  /// Moves the corners first to last of the loop onto the line between these two and returns last.
  /// If one of them would move too far, moves none and returns the one farthest from the line.
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

Shape Smoothed(const Shape& shape, const Model& model, SmoothEdges edges) {
  if (edges == SmoothEdges::kDesign) return Smoother(shape, model, edges).Run();
  std::vector<CutOutCircle> circles = FindCutOutCircles(shape, model);
  for (;;) {
    Shape rounded = shape;
    circles = AddCircles(rounded, model, circles);
    Shape smooth = Smoother(rounded, model, edges).Run();
    const std::vector<int> faulty = FaultyCircles(smooth);
    if (faulty.empty()) return smooth;
    for (auto k = faulty.rbegin(); k != faulty.rend(); ++k) circles.erase(circles.begin() + *k);
  }
}

}  // namespace quillane
