#include "export/cut_out_circles.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <map>
#include <numbers>
#include <optional>

namespace quillane {
namespace {

/// How far the middle of a cell may lie on the wrong side of the circle, in edges of a cell.
constexpr double kSlack = 0.1;
/// The widest square that counts as a circle, in cells.
constexpr int kWidestSquare = 3;
/// How far the centre may lie out of the domain, in edges of a cell.
constexpr double kCentreReach = 1.5;
/// The least radius of a region that one edge, or more than one edge, of the domain cuts, in edges
/// of a cell: below, a stair may mean a chamfer as well.
constexpr double kLeastCutRadius = 2, kLeastCornerRadius = 4;
/// How far a corner at the edge of the domain may slide along it into the material, in edges of a
/// cell.
constexpr double kSlide = 0.9;
/// Points that stand for an edge in the fit.
constexpr int kSamples = 4;

struct Edge {
  int from = 0, to = 0;      ///< corners, the region to the right
  bool hasMaterial = false;  ///< to the left
};

/// Cut-out cells connected by edges.
struct Region {
  std::vector<std::pair<int, int>> cells;             ///< row, column
  std::vector<Edge> edges;                            ///< towards other cells of the domain
  int low[2] = {INT_MAX, INT_MAX}, high[2] = {0, 0};  ///< least and largest row, column
};

class Regions {
 public:
  explicit Regions(const Model& model)
      : model_(model),
        visited_(static_cast<std::size_t>(model.CellRowCount) *
                 static_cast<std::size_t>(model.CellColumnCount)) {}

  /// Calls found(region) for every region.
  template <class Found>
  void ForEach(const Found& found) {
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j) {
        if (IsCutOut(i, j) && !Visited(i, j)) found(From(i, j));
      }
    }
  }

 private:
  bool IsCutOut(int i, int j) const { return model_.CellState(i, j) == kCellCutOut; }
  char& Visited(int i, int j) {
    return visited_[static_cast<std::size_t>((i - 1) * model_.CellColumnCount + j - 1)];
  }

  Region From(int row, int column) {
    Region region;
    region.cells = {{row, column}};
    Visited(row, column) = 1;
    for (std::size_t k = 0; k < region.cells.size(); ++k) {
      const auto [i, j] = region.cells[k];
      region.low[0] = std::min(region.low[0], i), region.high[0] = std::max(region.high[0], i);
      region.low[1] = std::min(region.low[1], j), region.high[1] = std::max(region.high[1], j);
      const int n = (i - 1) * (model_.CellColumnCount + 1) + j;  // the lower left corner
      const int above = n + model_.CellColumnCount + 1;
      Look(region, i + 1, j, {above, above + 1});
      Look(region, i, j + 1, {above + 1, n + 1});
      Look(region, i - 1, j, {n + 1, n});
      Look(region, i, j - 1, {n, above});
    }
    return region;
  }

  /// Looks at the cell beyond an edge of the region.
  void Look(Region& region, int i, int j, Edge edge) {
    if (i < 1 || i > model_.CellRowCount || j < 1 || j > model_.CellColumnCount) return;
    if (!IsCutOut(i, j)) {
      edge.hasMaterial = HasMaterial(model_, i, j);
      region.edges.push_back(edge);
    } else if (!Visited(i, j)) {
      Visited(i, j) = 1;
      region.cells.emplace_back(i, j);
    }
  }

  const Model& model_;
  std::vector<char> visited_;
};

class Fit {
 public:
  Fit(const Shape& shape, const Model& model) : shape_(shape), model_(model), cell_(shape.cell) {}

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
  Point Low() const { return shape_.corners[1]; }
  Point High() const { return shape_.corners.back(); }
  double FromCentre(Point p) const { return Length(p - circle_.centre); }

  /// How many sides of the domain the region touches.
  int SidesOfDomain(const Region& region) const {
    return (region.low[0] == 1 ? 1 : 0) + (region.low[1] == 1 ? 1 : 0) +
           (region.high[0] == model_.CellRowCount ? 1 : 0) +
           (region.high[1] == model_.CellColumnCount ? 1 : 0);
  }

  static bool IsMeantAsRectangle(const Region& region, int sides) {
    const int rows = region.high[0] - region.low[0] + 1;
    const int columns = region.high[1] - region.low[1] + 1;
    if (static_cast<int>(region.cells.size()) != rows * columns) return false;
    return sides > 0 || rows != columns || rows > kWidestSquare;
  }

  /// The centre of a half disc at an edge, or a quarter disc at a corner, of the domain.
  FixedCentre CentreOnEdge(const Region& region) const {
    const bool left = region.low[1] == 1, right = region.high[1] == model_.CellColumnCount;
    const bool lower = region.low[0] == 1, upper = region.high[0] == model_.CellRowCount;
    FixedCentre fixed;
    if (left != right) fixed.x = left ? Low().x : High().x;
    if (lower != upper) fixed.y = lower ? Low().y : High().y;
    return fixed;
  }

  std::vector<Point> Samples(const Region& region) const {
    std::vector<Point> samples;
    for (const Edge& edge : region.edges) {
      for (int k = 0; k < kSamples; ++k) {
        const Point along = At(edge.to) - At(edge.from);
        samples.push_back(At(edge.from) + (k + 0.5) / kSamples * along);
      }
    }
    return samples;
  }

  /// Whether the region is a digitized disc about the centre of the circle; if so, sets its radius.
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

  /// Where a corner lies on the circle: on the ray from the centre, or on the edge of the domain.
  std::optional<Point> Place(int corner) const {
    const int i = (corner - 1) / (model_.CellColumnCount + 1);
    const int j = (corner - 1) % (model_.CellColumnCount + 1);
    const Point home = At(corner), away = home - circle_.centre;
    const bool onSide = j == 0 || j == model_.CellColumnCount;
    if (!onSide && i != 0 && i != model_.CellRowCount) {
      return circle_.centre + circle_.radius / Length(away) * away;
    }
    const double across = onSide ? away.x : away.y, square = circle_.radius * circle_.radius;
    if (square <= across * across) return std::nullopt;
    const double old = onSide ? away.y : away.x;
    const double along = std::copysign(std::sqrt(square - across * across), old);
    if (std::abs(along) - std::abs(old) > kSlide * cell_) return std::nullopt;
    return circle_.centre + (onSide ? Point{across, along} : Point{along, across});
  }

  std::optional<CutOutCircle> OnCircle(const Region& region) const {
    CutOutCircle found{circle_, {}, {}};
    std::map<int, Point> places;
    for (const auto& [from, to, hasMaterial] : region.edges) {
      if (!hasMaterial) continue;
      for (const int corner : {from, to}) {
        if (places.contains(corner)) continue;
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
  Regions(model).ForEach([&](const Region& region) {
    if (std::optional<CutOutCircle> found = fit(region)) circles.push_back(*std::move(found));
  });
  return circles;
}

}  // namespace quillane
