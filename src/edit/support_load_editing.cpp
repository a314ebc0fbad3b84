#include "edit/support_load_editing.h"

#include <optional>

namespace quillane {
namespace {

/// Sets both components of a node, one at a time.
template <class T>
void SetPair(Array2<T>& records, int node, T x, T y, EditState& state) {
  state.changedSinceAnalysis |= records(node, 1) != x || records(node, 2) != y;
  records(node, 1) = x;
  records(node, 2) = y;
}

}  // namespace

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

PressResult LoadSet(Model& model, EditState& state, Single x, Single y) {
  const std::optional<int> node = NodeIn(model.NodeLoad.First(), model, x, y);
  if (!node) {
    model.ClickCount = 0;
    return PressResult::kNodeOutside;
  }
  SetPair(model.NodeLoad, *node, model.LoadFx, model.LoadFy, state);
  return PressResult::kLoaded;
}

}  // namespace quillane
