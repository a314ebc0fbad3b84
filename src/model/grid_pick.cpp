#include "model/grid_pick.h"

#include <cmath>

#include "model/numbers.h"

namespace quillane {
namespace {

/// Snapped coordinates and the domain's edges lie on the same grid lines but are rounded
/// differently (a product here, seven digits of a file there). A smaller difference, in cells, is
/// ignored.
constexpr Single kSameLine = 0.01F;

enum class UpperEdge { kInside, kOutside };

bool Within(Single position, Single lower, Single upper, Single elementSize, UpperEdge edge) {
  const Single slack = kSameLine * elementSize;
  if (!(position >= lower - slack)) return false;
  return edge == UpperEdge::kInside ? position <= upper + slack : position < upper - slack;
}

bool InDomain(const Model& model, Single x, Single y, UpperEdge edge) {
  return model.DomainDefined != 0 &&
         Within(x, model.DomainX1, model.DomainX2, model.ElementSize, edge) &&
         Within(y, model.DomainY1, model.DomainY2, model.ElementSize, edge);
}

/// Returns row and column of the grid point (x, y), counted from `first` at the domain's lower left
/// corner.
std::optional<CellIndex> IndexOf(const Model& model, Single x, Single y, int first) {
  const double row = static_cast<double>((y - model.DomainY1) / model.ElementSize) + first;
  const double column = static_cast<double>((x - model.DomainX1) / model.ElementSize) + first;
  if (!FitsInteger(row) || !FitsInteger(column)) return std::nullopt;
  return CellIndex{ToInteger(row, "The row"), ToInteger(column, "The column")};
}

/// Returns the grid line at or below a coordinate in cells, mm.
std::optional<Single> LineBelow(double cells, Single elementSize) {
  const double line = std::floor(cells) * static_cast<double>(elementSize);
  if (!FitsSingle(line)) return std::nullopt;
  return static_cast<Single>(line);
}

std::optional<CellIndex> PickCell(const Model& model, Single x, Single y, UpperEdge edge,
                                  int first) {
  const Single size = model.ElementSize;
  const std::optional<Single> left = LineBelow(static_cast<double>(x / size), size);
  const std::optional<Single> bottom = LineBelow(static_cast<double>(y / size), size);
  if (!left || !bottom || !InDomain(model, *left, *bottom, edge)) return std::nullopt;
  return IndexOf(model, *left, *bottom, first);
}

}  // namespace

std::optional<Single> NearestGridLine(Single position, Single elementSize) {
  return LineBelow(static_cast<double>(position / elementSize) + 0.5, elementSize);
}

std::optional<int> NodeAt(const Model& model, Single x, Single y) {
  const std::optional<Single> nodeX = NearestGridLine(x, model.ElementSize);
  const std::optional<Single> nodeY = NearestGridLine(y, model.ElementSize);
  if (!nodeX || !nodeY || !InDomain(model, *nodeX, *nodeY, UpperEdge::kInside)) {
    return std::nullopt;
  }
  const std::optional<CellIndex> point = IndexOf(model, *nodeX, *nodeY, 1);
  if (!point) return std::nullopt;
  return NodeOfCorner(model, point->row, point->column);
}

std::optional<int> NodeIn(const IndexRange& nodes, const Model& model, Single x, Single y) {
  const std::optional<int> node = NodeAt(model, x, y);
  return node && *node >= 1 && nodes.Contains(*node) ? node : std::nullopt;
}

std::optional<CellIndex> CellAt(const Model& model, Single x, Single y) {
  return PickCell(model, x, y, UpperEdge::kOutside, 1);
}

std::optional<CellIndex> CellOffsetAt(const Model& model, Single x, Single y) {
  return PickCell(model, x, y, UpperEdge::kInside, 0);
}

}  // namespace quillane
