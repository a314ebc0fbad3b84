#include "export/cut_out_circles.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>

#include "model/regular_grid.h"

namespace quillane {
namespace {

// Lengths in edges of a cell.
/// How far the middle of a cell may lie on the wrong side of the circle.
constexpr double kSlack = 0.1;
/// The widest square that counts as a circle.
constexpr int kWidestSquare = 3;
/// How far outside the domain the centre may lie.
constexpr double kCentreReach = 1.5;
/// The least radius of a region that touches one edge, or more than one edge, of the domain: a
/// smaller one may as well be the stairs of a chamfer.
constexpr double kLeastCutRadius = 2, kLeastCornerRadius = 4;
/// How far a corner at the edge of the domain may slide along it into the material.
constexpr double kSlide = 0.9;
/// The number of points on each edge that the circle is fitted to.
constexpr int kSamples = 4;

struct Edge {
  int from = 0, to = 0;      ///< corners, the region to the right
  bool hasMaterial = false;  ///< to the left
};

/// Cut-out cells connected by edges.
struct Region {
  std::vector<CellIndex> cells;
  std::vector<Edge> edges;                            ///< towards other cells of the domain
  CellIndex low = {INT_MAX, INT_MAX}, high = {0, 0};  ///< least and largest row and column
};

std::vector<Region> FindRegions(const Model& model) {
  const auto isCutOut = [&model](int i, int j) { return model.CellState(i, j) == kCellCutOut; };
  std::vector<Region> regions;
  for (std::vector<CellIndex>& cells : ConnectedCells(model, isCutOut)) {
    Region& region = regions.emplace_back();
    const auto look = [&](int row, int column, int from, int to) {
      if (!IsCell(model, row, column) || isCutOut(row, column)) return;
      region.edges.push_back({from, to, HasMaterial(model, row, column)});
    };
    for (const auto& [i, j] : cells) {
      region.low = {std::min(region.low.row, i), std::min(region.low.column, j)};
      region.high = {std::max(region.high.row, i), std::max(region.high.column, j)};
      const auto [lowerLeft, lowerRight, upperRight, upperLeft] = NodesOfCell(model, i, j);
      look(i + 1, j, upperLeft, upperRight);
      look(i, j + 1, upperRight, lowerRight);
      look(i - 1, j, lowerRight, lowerLeft);
      look(i, j - 1, lowerLeft, upperLeft);
    }
    region.cells = std::move(cells);
  }
  return regions;
}

/// Fits a circle to a region.
class Fit {
 public:
  Fit(const Shape& shape, const Model& model) : shape_(shape), model_(model), cell_(shape.cell) {}

  /// Returns the circle that a region stands for; nothing if it stands for none.
  std::optional<CutOutCircle> operator()(const Region& region) {
    const int sides = SidesOfDomain(region);
    if (region.edges.size() < 4 || IsMeantAsRectangle(region, sides)) return std::nullopt;
    const std::vector<Point> samples = Samples(region);
    if (sides > 0) {
      circle_ = FitCircle(samples, CentreOnEdge(region));
      if (IsDisc(region, sides)) return OnCircle(region);
    }
    circle_ = FitCircle(samples);
    return IsDisc(region, sides) ? OnCircle(region) : std::nullopt;
  }

 private:
  Point At(int corner) const { return shape_.At(corner); }
  Point Low() const { return At(1); }
  Point High() const { return shape_.corners.back(); }
  double FromCentre(Point p) const { return Length(p - circle_.centre); }

  /// Returns how many sides of the domain the region touches.
  int SidesOfDomain(const Region& region) const {
    return (region.low.row == 1 ? 1 : 0) + (region.low.column == 1 ? 1 : 0) +
           (region.high.row == model_.CellRowCount ? 1 : 0) +
           (region.high.column == model_.CellColumnCount ? 1 : 0);
  }

  static bool IsMeantAsRectangle(const Region& region, int sides) {
    const int rows = region.high.row - region.low.row + 1;
    const int columns = region.high.column - region.low.column + 1;
    if (static_cast<int>(region.cells.size()) != rows * columns) return false;
    return sides > 0 || rows != columns || rows > kWidestSquare;
  }

  /// Returns the centre of a half disc at an edge, or a quarter disc at a corner, of the domain.
  FixedCentre CentreOnEdge(const Region& region) const {
    const bool left = region.low.column == 1, right = region.high.column == model_.CellColumnCount;
    const bool lower = region.low.row == 1, upper = region.high.row == model_.CellRowCount;
    FixedCentre fixed;
    if (left != right) fixed.x = left ? Low().x : High().x;
    if (lower != upper) fixed.y = lower ? Low().y : High().y;
    return fixed;
  }

  std::vector<Point> Samples(const Region& region) const {
    std::vector<Point> samples;
    for (const Edge& edge : region.edges) {
      const Point from = At(edge.from), along = At(edge.to) - from;
      for (int k = 0; k < kSamples; ++k) samples.push_back(from + (k + 0.5) / kSamples * along);
    }
    return samples;
  }

  /// Returns whether the region is a digitized disc about the centre of the circle; if so, sets the
  /// radius.
  bool IsDisc(const Region& region, int sides) {
    const double least = sides == 0 ? 0 : sides == 1 ? kLeastCutRadius : kLeastCornerRadius;
    return circle_.radius >= least * cell_ && circle_.radius < 1E6 * cell_ && IsCentreNear() &&
           SeparateCells(region);
  }

  bool IsCentreNear() const {
    const Point c = circle_.centre;
    const double reach = kCentreReach * cell_;
    return c.x > Low().x - reach && c.y > Low().y - reach && c.x < High().x + reach &&
           c.y < High().y + reach;
  }

  /// Changes the radius as little as possible so that the circle separates the region's cells from
  /// those beside it. Returns whether that is possible.
  bool SeparateCells(const Region& region) {
    double inside = 0, outside = DBL_MAX;
    for (const auto& [i, j] : region.cells) {
      inside = std::max(inside, FromCentre(Low() + cell_ * Point{j - 0.5, i - 0.5}));
    }
    for (const Edge& edge : region.edges) {
      const Point along = At(edge.to) - At(edge.from);  // the cell beyond it
      const Point beyond = At(edge.from) + 0.5 * (along + Point{-along.y, along.x});
      outside = std::min(outside, FromCentre(beyond));
    }
    if (inside > outside + 2 * kSlack * cell_) return false;
    const double middle = (inside + outside) / 2;
    circle_.radius =
        std::clamp(circle_.radius, std::min(inside, middle), std::max(outside, middle));
    return true;
  }

  /// Returns the place of a corner on the circle: on the ray from the centre, or on the edge of the
  /// domain; nothing if the circle does not meet that edge near the corner.
  std::optional<Point> Place(int corner) const {
    const auto [row, column] = CornerOfNode(model_, corner);
    const Point away = At(corner) - circle_.centre;
    const bool onSide = column == 1 || column > model_.CellColumnCount;
    if (!onSide && row != 1 && row <= model_.CellRowCount) {
      return circle_.centre + circle_.radius / Length(away) * away;
    }
    const double across = onSide ? away.x : away.y, square = circle_.radius * circle_.radius;
    if (square <= across * across) return std::nullopt;
    const double old = onSide ? away.y : away.x;
    const double along = std::copysign(std::sqrt(square - across * across), old);
    if (std::abs(along) - std::abs(old) > kSlide * cell_) return std::nullopt;
    return circle_.centre + (onSide ? Point{across, along} : Point{along, across});
  }

  /// Returns the circle with the region's edges to material; nothing if one of them would not
  /// become an arc of less than a half circle.
  std::optional<CutOutCircle> OnCircle(const Region& region) const {
    CutOutCircle found{circle_, {}, {}};
    std::map<int, Point> places;
    for (const auto& [from, to, hasMaterial] : region.edges) {
      if (!hasMaterial) continue;
      for (const int corner : {from, to}) {
        const std::optional<Point> place = Place(corner);
        if (!place) return std::nullopt;
        places[corner] = *place;
      }
      const double angle = ClockwiseAngle(circle_, places[from], places[to]);
      if (!(angle > 1E-6 && angle < std::numbers::pi)) return std::nullopt;
      found.edges.emplace_back(from, to);
    }
    found.corners.assign(places.begin(), places.end());
    return found.edges.empty() ? std::nullopt : std::optional(found);
  }

  const Shape& shape_;
  const Model& model_;
  const double cell_;
  Circle circle_;
};

}  // namespace

std::vector<CutOutCircle> FindCutOutCircles(const Shape& shape, const Model& model) {
  std::vector<CutOutCircle> circles;
  Fit fit(shape, model);
  for (const Region& region : FindRegions(model)) {
    if (std::optional<CutOutCircle> found = fit(region)) circles.push_back(*std::move(found));
  }
  return circles;
}

}  // namespace quillane
