// Rectangles by two presses: the first is remembered, the second edits.
#include "ui/domain_editing.h"

#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "fem/mesh.h"
#include "model/grid_pick.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

std::pair<Single, Single> Ordered(Single a, Single b) {
  return a > b ? std::pair{b, a} : std::pair{a, b};
}

/// Rows or columns of cells between two grid lines; nothing where they are none or too many.
std::optional<int> CellsBetween(Single lower, Single upper, Single elementSize) {
  const double cells = std::nearbyint((static_cast<double>(upper) - static_cast<double>(lower)) /
                                      static_cast<double>(elementSize));
  if (!(cells >= 1 && cells <= kIntegerMax)) return std::nullopt;
  return static_cast<int>(cells);
}

/// Builds the mesh of the domain's rectangle; false, and nothing done, where it cannot be.
bool BuildDomain(Model& model, Single x2, Single y2) {
  const auto [left, right] = Ordered(model.DomainX1, x2);
  const auto [lower, upper] = Ordered(model.DomainY1, y2);
  const std::optional<int> rows = CellsBetween(lower, upper, model.ElementSize);
  const std::optional<int> columns = CellsBetween(left, right, model.ElementSize);
  if (!rows || !columns || (*rows + 1) * (*columns + 1) > kIntegerMax) return false;
  model.DomainX1 = left;
  model.DomainX2 = right;
  model.DomainY1 = lower;
  model.DomainY2 = upper;
  BuildMesh(model, *rows, *columns);
  model.DomainDefined = kTrue;
  model.EditMode = kModeNothing;
  return true;
}

PressResult RefuseGrid(Model& model, const Corners& corners) {
  model.DomainX1 = corners.standingX;
  model.DomainY1 = corners.standingY;
  model.ClickCount = 0;
  return PressResult::kBadGrid;
}

/// The grid point next to a press; nothing where it has no coordinates.
std::optional<std::pair<Single, Single>> GridPoint(const Model& model, Single x, Single y) {
  try {
    return std::pair{NearestGridLine(x, model.ElementSize), NearestGridLine(y, model.ElementSize)};
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

bool MeshHas(const Model& model, const CellIndex& cell) {
  const int element = ElementOfCell(model, cell.row, cell.column);
  return model.CellState.First().Contains(cell.row) &&
         model.CellState.Second().Contains(cell.column) &&
         model.ElementNodes.First().Contains(element) && model.NodeActive.Range().Contains(element);
}

/// The cell under a press as far as the mesh has it: a changed ElementSize or an odd file can make
/// the domain's rectangle disagree with the mesh.
std::optional<CellIndex> MeshCellAt(const Model& model, Single x, Single y) {
  try {
    const std::optional<CellIndex> cell = CellAt(model, x, y);
    return cell && MeshHas(model, *cell) ? cell : std::nullopt;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

void SetCells(Model& model, const Corners& corners, Integer state) {
  for (int row = corners.row1; row <= corners.row2; ++row) {
    for (int column = corners.column1; column <= corners.column2; ++column) {
      model.CellState(row, column) = state;
      // The flag of the node that bears the element's number; the redraw derives all flags anew.
      if (state > 0) model.NodeActive(ElementOfCell(model, row, column)) = 1;
    }
  }
}

PressResult EditRectangle(Model& model, Corners& corners, Single x, Single y, Integer state) {
  const std::optional<CellIndex> cell = MeshCellAt(model, x, y);
  if (!cell) return PressResult::kOutside;
  ++model.ClickCount;
  if (model.ClickCount == 1) {
    corners.column1 = cell->column;
    corners.row1 = cell->row;
    return PressResult::kFirstCorner;
  }
  if (model.ClickCount != 2) return PressResult::kNothing;
  model.ClickCount = 0;
  if (!MeshHas(model, {corners.row1, corners.column1})) return PressResult::kOutside;
  corners.column2 = cell->column;
  corners.row2 = cell->row;
  if (corners.column1 > corners.column2) std::swap(corners.column1, corners.column2);
  if (corners.row1 > corners.row2) std::swap(corners.row1, corners.row2);
  SetCells(model, corners, state);
  return PressResult::kEdited;
}

}  // namespace

PressResult DesignDomainSet(Model& model, Corners& corners, Single x, Single y) {
  ++model.ClickCount;
  const auto point = GridPoint(model, x, y);
  if (model.ClickCount == 1) {
    corners.standingX = model.DomainX1;
    corners.standingY = model.DomainY1;
    if (!point) return RefuseGrid(model, corners);
    std::tie(model.DomainX1, model.DomainY1) = *point;
    return PressResult::kFirstCorner;
  }
  if (model.ClickCount != 2) return PressResult::kNothing;
  if (!point || !BuildDomain(model, point->first, point->second)) {
    return RefuseGrid(model, corners);
  }
  return PressResult::kEdited;
}

PressResult AddDesignElements(Model& model, Corners& corners, Single x, Single y) {
  return EditRectangle(model, corners, x, y, kCellDesign);
}

PressResult AddNonDesignElements(Model& model, Corners& corners, Single x, Single y) {
  return EditRectangle(model, corners, x, y, kCellNonDesign);
}

PressResult RemoveElements(Model& model, Corners& corners, Single x, Single y) {
  return EditRectangle(model, corners, x, y, kCellEmpty);
}

PressResult DeleteDesignDomain(Model& model, Corners& corners, Single x, Single y) {
  return EditRectangle(model, corners, x, y, kCellCutOut);
}

}  // namespace quillane
