#include "edit/press.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "fem/mesh.h"
#include "model/regular_grid.h"

namespace quillane {
namespace {

void HoldCorner(Model& model, EditState& state) {
  model.ClickCount = 1;
  state.cornerMode = model.EditMode;
}

/// Returns the rows or columns of cells between two grid lines, in any order; 0 for more than an
/// Integer counts.
int CellsBetween(Single one, Single other, Single elementSize) {
  const double distance = std::fabs(double{other} - double{one});
  const double cells = std::nearbyint(distance / double{elementSize});
  return cells <= kIntegerMax ? static_cast<int>(cells) : 0;
}

/// Builds the domain between the held corner and (x2, y2). Returns false and does nothing for a
/// grid without cells or with more nodes than an Integer counts.
bool BuildDomain(Model& model, EditState& state, Single x2, Single y2) {
  const int rows = CellsBetween(state.cornerY, y2, model.ElementSize);
  const int columns = CellsBetween(state.cornerX, x2, model.ElementSize);
  if (!GridFits(rows, columns)) return false;
  model.DomainX1 = std::min(state.cornerX, x2);
  model.DomainX2 = std::max(state.cornerX, x2);
  model.DomainY1 = std::min(state.cornerY, y2);
  model.DomainY2 = std::max(state.cornerY, y2);
  BuildMesh(model, rows, columns);
  ClearResults(model);
  model.DomainDefined = kTrue;
  model.EditMode = kModeNothing;
  state.changedSinceAnalysis = true;
  return true;
}

/// Returns whether the mesh has the cell: after a change of ElementSize, or in an inconsistent
/// file, the domain's rectangle may not match it.
bool MeshHas(const Model& model, const CellIndex& cell) {
  const int element = ElementOfCell(model, cell.row, cell.column);
  return model.CellState.First().Contains(cell.row) &&
         model.CellState.Second().Contains(cell.column) &&
         model.ElementNodes.First().Contains(element) && model.NodeActive.Range().Contains(element);
}

void SetCells(Model& model, EditState& state, const CellIndex& low, const CellIndex& high,
              Integer code) {
  for (int row = low.row; row <= high.row; ++row) {
    for (int column = low.column; column <= high.column; ++column) {
      Integer& cell = model.CellState(row, column);
      state.changedSinceAnalysis |= cell != code;
      cell = code;
      // Deliberately the flag of the node with the element's number; harmless, as the redraw
      // derives all flags again.
      if (code > 0) model.NodeActive(ElementOfCell(model, row, column)) = 1;
    }
  }
}

/// Handles a press at (x, y), mm, in a corner cell of a rectangle. The second press sets the state
/// of all its cells. A press outside the domain is refused and keeps the first corner.
PressResult EditRectangle(Model& model, EditState& state, Single x, Single y, Integer code) {
  const std::optional<CellIndex> cell = CellAt(model, x, y);
  if (!cell || !MeshHas(model, *cell)) return PressResult::kElementOutside;
  if (!HoldsCorner(model, state)) {
    HoldCorner(model, state);
    state.cornerCell = *cell;
    return PressResult::kFirstCorner;
  }
  model.ClickCount = 0;
  const CellIndex& corner = state.cornerCell;
  const CellIndex low{std::min(corner.row, cell->row), std::min(corner.column, cell->column)};
  const CellIndex high{std::max(corner.row, cell->row), std::max(corner.column, cell->column)};
  if (!MeshHas(model, low) || !MeshHas(model, high)) return PressResult::kElementOutside;
  SetCells(model, state, low, high, code);
  return PressResult::kEdited;
}

PressResult AddDesignElements(Model& model, EditState& state, Single x, Single y) {
  return EditRectangle(model, state, x, y, kCellDesign);
}

PressResult AddNonDesignElements(Model& model, EditState& state, Single x, Single y) {
  return EditRectangle(model, state, x, y, kCellNonDesign);
}

PressResult RemoveElements(Model& model, EditState& state, Single x, Single y) {
  return EditRectangle(model, state, x, y, kCellEmpty);
}

PressResult DeleteDesignDomain(Model& model, EditState& state, Single x, Single y) {
  return EditRectangle(model, state, x, y, kCellCutOut);
}

/// Sets both components of a node, one at a time.
template <class T>
void SetPair(Array2<T>& records, int node, T x, T y, EditState& state) {
  state.changedSinceAnalysis |= records(node, 1) != x || records(node, 2) != y;
  records(node, 1) = x;
  records(node, 2) = y;
}

/// Handles a press at (x, y), mm, on a corner of the domain. The second press builds the domain
/// between the grid points nearest to both, clears everything else and ends the edit mode. Refuses
/// an impossible grid: the old domain remains and the next press is a first one again.
PressResult DesignDomainSet(Model& model, EditState& state, Single x, Single y) {
  const bool second = HoldsCorner(model, state);
  const std::optional<Single> cornerX = NearestGridLine(x, model.ElementSize);
  const std::optional<Single> cornerY = NearestGridLine(y, model.ElementSize);
  model.ClickCount = 0;
  if (!cornerX || !cornerY) return PressResult::kImpossibleDomain;
  if (second) {
    return BuildDomain(model, state, *cornerX, *cornerY) ? PressResult::kNewDomain
                                                         : PressResult::kImpossibleDomain;
  }
  HoldCorner(model, state);
  state.cornerX = *cornerX;
  state.cornerY = *cornerY;
  return PressResult::kFirstCorner;
}

/// Writes both support flags of the node nearest to (x, y), mm, as EditMode says; codes beyond
/// kModeFree write nothing.
PressResult FreedomSet(Model& model, EditState& state, Single x, Single y) {
  const auto set = [&](int node, Integer fixedX, Integer fixedY) {
    SetPair(model.NodeFreedom, node, fixedX, fixedY, state);
  };
  const std::optional<int> node = NodeIn(model.NodeFreedom.First(), model, x, y);
  if (!node) return PressResult::kNodeOutside;
  if (model.EditMode == kModeFixX) set(*node, 1, 0);
  if (model.EditMode == kModeFixY) set(*node, 0, 1);
  if (model.EditMode == kModeFixXY) set(*node, 1, 1);
  if (model.EditMode == kModeFree) set(*node, 0, 0);
  return PressResult::kEdited;
}

/// Replaces the load of the node nearest to (x, y), mm, by LoadFx, LoadFy.
PressResult LoadSet(Model& model, EditState& state, Single x, Single y) {
  const std::optional<int> node = NodeIn(model.NodeLoad.First(), model, x, y);
  if (!node) {
    model.ClickCount = 0;
    return PressResult::kNodeOutside;
  }
  SetPair(model.NodeLoad, *node, model.LoadFx, model.LoadFy, state);
  return PressResult::kLoaded;
}

/// Makes the pressed point the origin. The fractions stay, so the next resize undoes the move.
PressResult MoveOrigin(Model& model, Single x, Single y) {
  model.ViewRight -= x;
  model.ViewTop -= y;
  return PressResult::kOriginMoved;
}

bool NeedsDomain(Integer mode) {
  return mode < 0 || mode == kModeDesign || mode == kModeNonDesign || mode == kModeLoad ||
         mode >= kModeFixX;
}

}  // namespace

PressResult Press(Model& model, EditState& state, Single x, Single y) {
  using enum PressResult;
  PressResult result = kNothing;
  // Deliberately no else: each test asks for the mode that the operations before it have left.
  if (model.EditMode == kModeOrigin) result = MoveOrigin(model, x, y);
  if (model.EditMode == kModeDomain) result = DesignDomainSet(model, state, x, y);
  if (model.EditMode == kModeDesign) result = AddDesignElements(model, state, x, y);
  if (model.EditMode == kModeNonDesign) result = AddNonDesignElements(model, state, x, y);
  if (model.EditMode == kModeCutOut) result = DeleteDesignDomain(model, state, x, y);
  if (model.EditMode == kModeRemove) result = RemoveElements(model, state, x, y);
  if (model.EditMode == kModeLoad) result = LoadSet(model, state, x, y);
  if (model.EditMode == kModeDisplacement) result = kReadDisplacement;
  if (model.EditMode == kModeStress) result = kReadStress;
  if (model.EditMode == kModePotential) result = kReadPotential;
  if (model.EditMode == kModeLoadValue) result = kReadLoad;
  if (model.EditMode >= kModeFixX) result = FreedomSet(model, state, x, y);
  return result;
}

bool BeginMode(Model& model, Integer mode) {
  model.ClickCount = 0;
  if (NeedsDomain(mode) && model.DomainDefined == 0) return false;
  model.EditMode = mode;
  return true;
}

}  // namespace quillane
