#include "display/read_outs.h"

#include "model/grid_pick.h"
#include "model/number_text.h"
#include "model/numbers.h"

namespace quillane {
namespace {

/// Returns the offset of the cell at a press if it is within the array's range; the grid may not
/// fit the mesh. Offset 0 is returned even if the array begins at 1.
std::optional<CellIndex> CellIn(const Array2<Double>& values, const Model& model, Single x,
                                Single y) {
  const std::optional<CellIndex> cell = CellOffsetAt(model, x, y);
  return cell && cell->row <= values.First().upper && cell->column <= values.Second().upper
             ? cell
             : std::nullopt;
}

/// Returns "row,column" with the label and the value of a cell, in single precision.
std::string CellCaption(CellIndex cell, const char* label, Double value) {
  return GeneralText(int{cell.row}) + "," + GeneralText(int{cell.column}) + "   " + label + " = " +
         GeneralText(ToSingle(value, label));
}

}  // namespace

std::optional<std::string> loadValue(const Model& model, Single x, Single y) {
  const std::optional<int> node = NodeIn(model.NodeLoad.First(), model, x, y);
  if (!node) return std::nullopt;
  return "Px = " + GeneralText(model.NodeLoad(*node, 1)) +
         "N  Py = " + GeneralText(model.NodeLoad(*node, 2)) + "N";
}

std::optional<std::string> dispValue(const Model& model, Single x, Single y) {
  const std::optional<int> node = NodeIn(model.NodeDisp.First(), model, x, y);
  if (!node) return std::nullopt;
  return "u = " + GeneralText(model.NodeDisp(*node, 1)) +
         "mm  v = " + GeneralText(model.NodeDisp(*node, 2)) + "mm";
}

std::optional<std::string> stressValue(const Model& model, Single x, Single y) {
  const std::optional<CellIndex> cell = CellIn(model.CellStress, model, x, y);
  if (!cell) return std::nullopt;
  return CellCaption(*cell, "stress", model.CellStress(cell->row, cell->column)) + "MPa";
}

std::optional<std::string> neuronValue(const Model& model, Single x, Single y) {
  const std::optional<CellIndex> cell = CellIn(model.Potential, model, x, y);
  if (!cell) return std::nullopt;
  return CellCaption(*cell, "Potential", model.Potential(cell->row, cell->column));
}

}  // namespace quillane
