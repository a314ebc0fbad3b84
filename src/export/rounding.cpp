#include "export/rounding.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <unordered_map>

#include "export/outline.h"
#include "export/segment_grid.h"
#include "export/smoothing.h"
#include "export/triangles.h"
#include "model/regular_grid.h"

namespace quillane {
namespace {

/// How far chords may lie from their arcs in the search for folded cells and crossings, in edges of
/// a cell.
constexpr double kDeviation = 0.01;

/// Returns whether the sides of a cell, which may be arcs, cross or leave it too thin.
bool IsFolded(const Shape& shape, const Cell& cell) {
  return Triangles(CellPolygon(shape, cell, kDeviation * shape.cell)).empty();
}

/// Puts circles into a shape, one after another.
class Rounding {
 public:
  Rounding(Shape& shape, const Model& model) : shape_(shape) {
    for (const auto& cell : shape.cells) {
      for (const int corner : cell) cellsAt_[corner].push_back(cell);
    }
    for (const Cell& cell : ThinCells(shape, model)) {
      if (IsTip(model, cell)) continue;  // where an arc meets the edge of the domain
      for (const int corner : cell) thinAt_[corner].push_back(cell);
    }
    const std::vector<int> contacts = CornerContacts(shape);
    taken_.insert(contacts.begin(), contacts.end());
  }

  /// Adds the circle if the shape remains sound. Returns whether it did.
  bool Add(const CutOutCircle& circle) {
    const auto isTaken = [this](const auto& corner) { return taken_.contains(corner.first); };
    if (std::ranges::any_of(circle.corners, isTaken)) return false;
    auto places = circle.corners;
    const auto exchangePlaces = [&] {
      for (auto& [corner, place] : places) std::swap(shape_.At(corner), place);
    };
    exchangePlaces();
    for (const auto& edge : circle.edges) {
      shape_.arcs[edge] = static_cast<int>(shape_.circles.size());
    }
    shape_.circles.push_back(circle.circle);
    if (std::ranges::all_of(places, [this](const auto& place) { return IsSound(place.first); })) {
      for (const auto& [corner, place] : places) taken_.insert(corner);
      return true;
    }
    exchangePlaces();
    for (const auto& edge : circle.edges) shape_.arcs.erase(edge);
    shape_.circles.pop_back();
    return false;
  }

 private:
  /// Returns whether at least three sides of a cell are on the edge.
  static bool IsTip(const Model& model, const Cell& cell) {
    const auto [i, j] = CornerOfNode(model, std::ranges::min(cell));
    const auto present = [&model](int row, int column) {
      return HasMaterial(model, row, column) ? 1 : 0;
    };
    return present(i - 1, j) + present(i + 1, j) + present(i, j - 1) + present(i, j + 1) <= 1;
  }

  /// Returns how far (mm) the arc on an edge lies from its chord; 0 for a straight edge.
  double Bulge(int from, int to) {
    const Circle* arc = ArcOfEdge(shape_, from, to);
    if (arc == nullptr) return 0;
    const double half = Length(shape_.At(to) - shape_.At(from)) / 2;
    return arc->radius - std::sqrt(std::max(0.0, arc->radius * arc->radius - half * half));
  }

  /// Returns whether no cell at a corner is folded and no thin one too narrow.
  bool IsSound(int corner) {
    const auto isFolded = [this](const Cell& cell) { return IsFolded(shape_, cell); };
    const auto isNarrow = [this](const Cell& cell) {
      const double bulges = Bulge(cell[0], cell[1]) + Bulge(cell[2], cell[3]);
      return ThinCellWidth(shape_, cell) - bulges < kThinnestMember * shape_.cell;
    };
    return std::ranges::none_of(cellsAt_[corner], isFolded) &&
           std::ranges::none_of(thinAt_[corner], isNarrow);
  }

  Shape& shape_;
  std::unordered_map<int, std::vector<Cell>> cellsAt_, thinAt_;
  std::set<int> taken_;
};

/// Returns whether two segments cross, ends excluded.
bool Cross(const SegmentGrid::Segment& s, const SegmentGrid::Segment& t) {
  const auto side = [](Point from, Point to, Point p) { return Cross(to - from, p - from); };
  return side(s.a, s.b, t.a) * side(s.a, s.b, t.b) < 0 &&
         side(t.a, t.b, s.a) * side(t.a, t.b, s.b) < 0;
}

}  // namespace

std::vector<CutOutCircle> AddCircles(Shape& shape, const Model& model,
                                     const std::vector<CutOutCircle>& circles) {
  Rounding rounding(shape, model);
  std::vector<CutOutCircle> added;
  std::ranges::copy_if(circles, std::back_inserter(added),
                       [&](const CutOutCircle& circle) { return rounding.Add(circle); });
  return added;
}

std::vector<int> FaultyCircles(const Shape& shape) {
  std::set<int> faulty;
  const SegmentGrid grid(Polygons(Outline(shape), kDeviation * shape.cell), shape.cell);
  const auto addThoseAt = [&](Point p) {
    for (std::size_t k = 0; k < shape.circles.size(); ++k) {
      const auto& [centre, radius] = shape.circles[k];
      if (std::abs(Length(p - centre) - radius) <= 1E-6 * (radius + shape.cell)) {
        faulty.insert(static_cast<int>(k));
      }
    }
  };
  for (const SegmentGrid::Segment& s : grid.Segments()) {
    const double reach = Length(s.b - s.a) / 2;
    grid.ForEachNear(0.5 * (s.a + s.b), reach, [&](int index) {
      const SegmentGrid::Segment& t = grid.At(index);
      if (!Cross(s, t)) return;
      for (const Point& end : {s.a, s.b, t.a, t.b}) addThoseAt(end);
    });
  }
  std::unordered_map<int, int> circleOf;
  for (const auto& [edge, circle] : shape.arcs) {
    circleOf[edge.first] = circleOf[edge.second] = circle;
  }
  for (const auto& cell : shape.cells) {
    const auto corner = std::ranges::find_if(cell, [&](int c) { return circleOf.contains(c); });
    if (corner == cell.end() || !IsFolded(shape, cell)) continue;
    faulty.insert(circleOf[*corner]);
  }
  return {faulty.begin(), faulty.end()};
}

std::vector<Cell> ThinCells(const Shape& shape, const Model& model) {
  std::vector<Cell> thin;
  for (const auto& [a, b, c, d] : shape.cells) {
    const auto [i, j] = CornerOfNode(model, a);
    if (!HasMaterial(model, i - 1, j) && !HasMaterial(model, i + 1, j))
      thin.push_back({a, b, c, d});
    if (!HasMaterial(model, i, j - 1) && !HasMaterial(model, i, j + 1))
      thin.push_back({b, c, d, a});
  }
  return thin;
}

double ThinCellWidth(const Shape& shape, const Cell& cell) {
  const Point a = shape.At(cell[0]), b = shape.At(cell[1]), c = shape.At(cell[2]),
              d = shape.At(cell[3]);
  return std::min({Distance(a, c, d), Distance(b, c, d), Distance(c, a, b), Distance(d, a, b)});
}

}  // namespace quillane
