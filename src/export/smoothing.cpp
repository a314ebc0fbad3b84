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
/// The farthest that straightening moves a corner, in edges of a cell; the filter moves it less by
/// that much.
constexpr double kStraightness = 0.02;
constexpr double kFilterReach = kSmoothingReach - kStraightness;
/// The smallest movement that is not negligible, in edges of a cell.
constexpr double kLeastMovement = 0.001;

/// Returns for each corner whether it must stay.
std::vector<char> HeldCorners(const Shape& shape, const Model& model, SmoothEdges edges) {
  const auto designable = [&model, edges](int i, int j) {
    if (!IsCell(model, i, j)) return false;
    const Integer state = model.CellState(i, j);
    return edges == SmoothEdges::kAll || state == kCellDesign || state == kCellEmpty;
  };
  std::vector<char> held(shape.corners.size());
  const auto hold = [&held](int corner) { held[static_cast<std::size_t>(corner)] = 1; };
  for (const std::vector<int>& loop : shape.loops) {
    for (const int n : loop) {
      const auto [i, j] = CornerOfNode(model, n);
      const bool inside = designable(i, j) && designable(i, j - 1) && designable(i - 1, j) &&
                          designable(i - 1, j - 1);
      if (!inside || IsHeld(model, n) || IsLoaded(model, n)) hold(n);
    }
  }
  for (const int contact : CornerContacts(shape)) hold(contact);
  for (const auto& [edge, circle] : shape.arcs) hold(edge.first), hold(edge.second);
  return held;
}

/// Smooths the loops of a shape.
class Smoother {
 public:
  Smoother(const Shape& shape, const Model& model, SmoothEdges edges)
      : home_(shape),
        shape_(shape),
        held_(HeldCorners(shape, model, edges)),
        thin_(ThinCells(shape, model)),
        cell_(shape.cell) {}

  /// Returns the smoothed shape. If its area differs too much, moves all corners back by the same
  /// share until it does not.
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
  Point& At(int corner) { return shape_.At(corner); }
  bool Stays(int corner) const { return held_[static_cast<std::size_t>(corner)] != 0; }

  /// Moves every free corner of the loop at the same time to target(before, here, after), but not
  /// out of reach.
  template <class Target>
  void MoveAll(const std::vector<int>& loop, const Target& target) {
    const double reach = kFilterReach * cell_;
    Point before = At(loop.back());
    const Point first = At(loop.front());
    for (std::size_t k = 0; k < loop.size(); ++k) {
      const Point here = At(loop[k]), after = k + 1 == loop.size() ? first : At(loop[k + 1]);
      const Point there = target(std::exchange(before, here), here, after);
      if (Stays(loop[k])) continue;
      const Point home = home_.At(loop[k]);
      At(loop[k]) = {std::clamp(there.x, home.x - reach, home.x + reach),
                     std::clamp(there.y, home.y - reach, home.y + reach)};
    }
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
      if (Stays(loop[(k + 1) % loop.size()])) continue;
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
      for (const Cell& cell : thin_) {
        const double least = (kThinnestMember + 2 * kStraightness) * cell_;
        if (ThinCellWidth(shape_, cell) >= least || !HasMoved(cell)) continue;
        narrow = true;
        for (const int corner : cell) At(corner) = 0.5 * (At(corner) + home_.At(corner));
      }
    }
  }

  bool HasMoved(const Cell& cell) {
    return std::ranges::any_of(cell, [this](int corner) {
      return Length(At(corner) - home_.At(corner)) > kLeastMovement * cell_;
    });
  }

  /// Moves the corners of nearly straight pieces of the loop onto straight lines.
  void Straighten(const std::vector<int>& loop) {
    std::vector<std::size_t> ends;  // of the pieces between held corners
    for (std::size_t k = 0; k < loop.size(); ++k) {
      if (Stays(loop[k])) ends.push_back(k);
    }
    if (ends.empty()) ends.push_back(0);
    if (ends.size() == 1) ends.push_back(ends.front() + loop.size() / 2);
    ends.push_back(ends.front() + loop.size());
    std::vector<std::pair<std::size_t, std::size_t>> pieces;
    for (std::size_t k = 1; k < ends.size(); ++k) pieces.emplace_back(ends[k - 1], ends[k]);
    while (!pieces.empty()) {
      const auto [first, last] = pieces.back();
      pieces.pop_back();
      const std::size_t split = StraightenPiece(loop, first, last);
      if (split == last) continue;
      pieces.emplace_back(first, split);
      pieces.emplace_back(split, last);
    }
  }

  /// Moves the corners between first and last of the loop onto the line between these two and
  /// returns last. If one of them would move too far, moves none and returns the one farthest from
  /// the line.
  std::size_t StraightenPiece(const std::vector<int>& loop, std::size_t first, std::size_t last) {
    const auto at = [&](std::size_t k) -> Point& { return At(loop[k % loop.size()]); };
    const Point a = at(first), b = at(last);
    double length = 0, along = 0, farthest = -1;
    for (std::size_t k = first; k < last; ++k) length += Length(at(k + 1) - at(k));
    std::size_t split = last;
    bool straight = true;
    std::vector<Point> places;
    for (std::size_t k = first + 1; k < last; ++k) {
      along += Length(at(k) - at(k - 1));
      places.push_back(a + along / length * (b - a));
      straight = straight && Length(places.back() - at(k)) <= kStraightness * cell_;
      const double distance = Distance(at(k), a, b);
      if (distance > farthest) split = k;
      farthest = std::max(distance, farthest);
    }
    if (!straight) return split;
    for (std::size_t k = first + 1; k < last; ++k) at(k) = places[k - first - 1];
    return last;
  }

  const Shape& home_;
  Shape shape_;
  const std::vector<char> held_;
  const std::vector<Cell> thin_;
  const double cell_;
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
