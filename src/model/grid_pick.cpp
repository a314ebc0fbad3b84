// Snapping of presses to the grid and to the design domain.
#include "model/grid_pick.h"

#include <cmath>

#include "model/numbers.h"

namespace quillane {
namespace {

/// Snapped coordinates and the domain's edges lie on the same grid lines but reach us over
/// different roundings (a product here, seven digits of a file there); less than this part of a
/// cell between them is no difference.
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

/// Row and column of the grid point (x, y), counted from `first` at the domain's lower left corner.
CellIndex IndexOf(const Model& model, Single x, Single y, int first) {
  const auto row = static_cast<double>((y - model.DomainY1) / model.ElementSize);
  const auto column = static_cast<double>((x - model.DomainX1) / model.ElementSize);
  return {ToInteger(row + first, "The row of the press"),
          ToInteger(column + first, "The column of the press")};
}

std::optional<CellIndex> PickCell(const Model& model, Single x, Single y, UpperEdge edge,
                                  int first) {
  const Single left = CellEdge(x, model.ElementSize);
  const Single bottom = CellEdge(y, model.ElementSize);
  if (!InDomain(model, left, bottom, edge)) return std::nullopt;
  return IndexOf(model, left, bottom, first);
}

/// The grid line at or below a coordinate in cells, mm.
Single LineBelow(double cells, Single elementSize) {
  return ToSingle(std::floor(cells) * static_cast<double>(elementSize),
                  "The grid line of the press");
}

}  // namespace

Single NearestGridLine(Single position, Single elementSize) {
  return LineBelow(static_cast<double>(position / elementSize) + 0.5, elementSize);
}

Single CellEdge(Single position, Single elementSize) {
  return LineBelow(static_cast<double>(position / elementSize), elementSize);
}

std::optional<int> NodeAt(const Model& model, Single x, Single y) {
  const Single nodeX = NearestGridLine(x, model.ElementSize);
  const Single nodeY = NearestGridLine(y, model.ElementSize);
  if (!InDomain(model, nodeX, nodeY, UpperEdge::kInside)) return std::nullopt;
  const CellIndex point = IndexOf(model, nodeX, nodeY, 1);
  return (point.row - 1) * (model.CellColumnCount + 1) + point.column;
}

std::optional<CellIndex> CellAt(const Model& model, Single x, Single y) {
  return PickCell(model, x, y, UpperEdge::kOutside, 1);
}

std::optional<CellIndex> CellOffsetAt(const Model& model, Single x, Single y) {
  return PickCell(model, x, y, UpperEdge::kInside, 0);
}

}  // namespace quillane
