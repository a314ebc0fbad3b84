#include "display/read_outs.h"

#include "model/grid_pick.h"
#include "model/number_text.h"
#include "model/numbers.h"

namespace quillane {
namespace {

using Caption = std::optional<std::string>;

/// Returns both components at the node nearest to a press, each after its label.
Caption NodeCaption(const Array2<Double>& values, const Model& model, Single x, Single y,
                    const char* first, const char* second, const char* unit) {
  const std::optional<int> node = NodeIn(values.First(), model, x, y);
  if (!node) return std::nullopt;
  return first + GeneralText(values(*node, 1)) + unit + second + GeneralText(values(*node, 2)) +
         unit;
}

/// Returns "row,column" of a press, counted from 0, with the label and the value there in single
/// precision; nothing beyond the array's upper bounds, as the grid may not fit the mesh.
Caption CellCaption(const Array2<Double>& values, const Model& model, Single x, Single y,
                    const char* label) {
  const std::optional<CellIndex> cell = CellOffsetAt(model, x, y);
  if (!cell || cell->row > values.First().upper || cell->column > values.Second().upper) {
    return std::nullopt;
  }
  const Single value = ToSingle(values(cell->row, cell->column), label);
  return GeneralText(cell->row) + "," + GeneralText(cell->column) + "   " + label + " = " +
         GeneralText(value);
}

}  // namespace

std::optional<std::string> loadValue(const Model& model, Single x, Single y) {
  return NodeCaption(model.NodeLoad, model, x, y, "Px = ", "  Py = ", "N");
}

std::optional<std::string> dispValue(const Model& model, Single x, Single y) {
  return NodeCaption(model.NodeDisp, model, x, y, "u = ", "  v = ", "mm");
}

std::optional<std::string> stressValue(const Model& model, Single x, Single y) {
  const Caption caption = CellCaption(model.CellStress, model, x, y, "stress");
  return caption ? *caption + "MPa" : caption;
}

std::optional<std::string> neuronValue(const Model& model, Single x, Single y) {
  return CellCaption(model.Potential, model, x, y, "Potential");
}

}  // namespace quillane
