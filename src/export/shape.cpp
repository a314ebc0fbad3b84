#include "export/shape.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "model/regular_grid.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

[[noreturn]] void ThrowNoGrid(const std::string& what) {
  throw FileWriteError("an outline needs the regular grid of a domain, but " + what);
}

/// Returns the grid point of each node. Throws if the nodes do not form the grid.
std::vector<Point> GridCorners(const Model& model) {
  if (!CountsMatchGrid(model)) {
    ThrowNoGrid("its nodes or elements are not as many as its cells need");
  }
  const double size{model.ElementSize};
  if (!(size > 0)) ThrowNoGrid("its cells have no size");
  std::vector<Point> corners(1);
  for (int i = 0; i <= model.CellRowCount; ++i) {
    for (int j = 0; j <= model.CellColumnCount; ++j) {
      corners.push_back({model.NodeXY(1, 1) + j * size, model.NodeXY(1, 2) + i * size});
    }
  }
  const Point first = corners[1], last = corners.back();
  const double far =
      std::max({std::abs(first.x), std::abs(first.y), std::abs(last.x), std::abs(last.y)});
  if (!(far / size < 1E9)) {
    ThrowNoGrid("it lies too far from the origin for the size of its cells");
  }
  const auto misplaced = MisplacedNodes(model, first.x, first.y);
  if (!misplaced.empty()) {
    ThrowNoGrid("node " + std::to_string(misplaced.front().node) + " lies elsewhere");
  }
  return corners;
}

/// Returns the cells with material. Throws if the nodes of an element are not the corners of its
/// cell.
std::vector<Cell> PresentCells(const Model& model) {
  std::vector<Cell> cells;
  ForEachPresentCell(model, [&](int i, int j, int e) {
    cells.push_back(NodesOfCell(model, i, j));
    if (NodesOfElement(model, e) != cells.back()) {
      ThrowNoGrid("element " + std::to_string(e) + " has other nodes than its cell");
    }
  });
  if (cells.empty()) throw FileWriteError("the plate has no material");
  return cells;
}

/// Walks along the boundary of the material, one side of a cell after another, with the material on
/// the left.
class Walk {
 public:
  /// Collects for each node the directions of the boundary sides that begin there.
  explicit Walk(const Model& model) : nodesPerRow_(model.CellColumnCount + 1) {
    ForEachPresentCell(model, [&](int i, int j, int) {
      const auto [lowerLeft, lowerRight, upperRight, upperLeft] = NodesOfCell(model, i, j);
      if (!HasMaterial(model, i - 1, j)) leaving_[lowerLeft] |= 1U << kEast;
      if (!HasMaterial(model, i, j + 1)) leaving_[lowerRight] |= 1U << kNorth;
      if (!HasMaterial(model, i + 1, j)) leaving_[upperRight] |= 1U << kWest;
      if (!HasMaterial(model, i, j - 1)) leaving_[upperLeft] |= 1U << kSouth;
    });
  }

  std::vector<std::vector<int>> Loops() {
    for (const auto& [start, directions] : leaving_) {
      if (directions != 0) From(start);
    }
    return loops_;
  }

 private:
  enum Direction : unsigned { kEast, kNorth, kWest, kSouth };

  /// Walks until no edge leaves the start any more. Where the path meets itself, the part since
  /// then becomes a loop, so that no loop touches itself.
  void From(int start) {
    std::vector<int> path = {start};
    std::unordered_map<int, std::ptrdiff_t> indexInPath = {{start, 0}};
    unsigned direction = static_cast<unsigned>(std::countr_zero(leaving_.at(start)));
    while (leaving_.at(path.back()) != 0) {
      const int next = Step(path.back(), direction);
      const auto [known, fresh] = indexInPath.try_emplace(next, std::ssize(path));
      if (fresh) {
        path.push_back(next);
        continue;
      }
      const auto first = path.begin() + known->second;
      loops_.emplace_back(first, path.end());
      for (auto corner = first + 1; corner != path.end(); ++corner) indexInPath.erase(*corner);
      path.erase(first + 1, path.end());
    }
  }

  /// Takes the next edge from a corner: left before straight before right. This stays with the same
  /// cell where two cells touch.
  int Step(int corner, unsigned& direction) {
    unsigned& leaving = leaving_.at(corner);
    for (const unsigned turn : {1U, 0U, 3U}) {
      const unsigned ahead = (direction + turn) % 4;
      if ((leaving & 1U << ahead) == 0) continue;
      leaving &= ~(1U << ahead);
      direction = ahead;
      break;
    }
    const std::array<int, 4> step = {1, nodesPerRow_, -1, -nodesPerRow_};
    return corner + step[direction];
  }

  int nodesPerRow_;
  std::map<int, unsigned> leaving_;  ///< by corner: bit d is set if an edge leaves in direction d
  std::vector<std::vector<int>> loops_;
};

}  // namespace

Shape TraceShape(const Model& model) {
  Shape shape;
  if (model.CellRowCount > 0) shape.corners = GridCorners(model);
  shape.cell = double{model.ElementSize};
  shape.cells = PresentCells(model);
  shape.loops = Walk(model).Loops();
  return shape;
}

const Circle* ArcOfEdge(const Shape& shape, int from, int to) {
  const auto arc = shape.arcs.find({from, to});
  if (arc == shape.arcs.end()) return nullptr;
  return &shape.circles[static_cast<std::size_t>(arc->second)];
}

std::vector<int> CornerContacts(const Shape& shape) {
  std::vector<int> contacts;
  std::unordered_set<int> visited;
  for (const std::vector<int>& loop : shape.loops) {
    for (const int corner : loop) {
      if (!visited.insert(corner).second) contacts.push_back(corner);
    }
  }
  return contacts;
}

double LoopArea(const Shape& shape, const std::vector<int>& loop) {
  // From the first corner, so that no digits are lost.
  const auto from = [&](int corner) { return shape.At(corner) - shape.At(1); };
  double twice = 0;
  for (int last = loop.back(); const int corner : loop) {
    twice += Cross(from(last), from(corner));
    if (const Circle* arc = ArcOfEdge(shape, last, corner)) {
      const double angle = ClockwiseAngle(*arc, shape.At(last), shape.At(corner));
      twice -= arc->radius * arc->radius * (angle - std::sin(angle));
    }
    last = corner;
  }
  return twice / 2;
}

double Area(const Shape& shape) {
  double area = 0;
  for (const std::vector<int>& loop : shape.loops) area += LoopArea(shape, loop);
  return area;
}

}  // namespace quillane
