// One press, one node.
#include "ui/support_load_editing.h"

#include <optional>

#include "model/grid_pick.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// The node next to a press as far as the mesh has it: a changed ElementSize or an odd file can
/// make the domain's rectangle disagree with the mesh.
std::optional<int> MeshNodeAt(const Model& model, const IndexRange& nodes, Single x, Single y) {
  try {
    const std::optional<int> node = NodeAt(model, x, y);
    return node && *node >= 1 && nodes.Contains(*node) ? node : std::nullopt;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

void SetFreedom(Model& model, int node, Integer x, Integer y) {
  model.NodeFreedom(node, 1) = x;
  model.NodeFreedom(node, 2) = y;
}

}  // namespace

PressResult FreedomSet(Model& model, Single x, Single y) {
  const std::optional<int> node = MeshNodeAt(model, model.NodeFreedom.First(), x, y);
  if (!node) return PressResult::kOutside;
  if (model.EditMode == kModeFixX) SetFreedom(model, *node, 1, 0);
  if (model.EditMode == kModeFixY) SetFreedom(model, *node, 0, 1);
  if (model.EditMode == kModeFixXY) SetFreedom(model, *node, 1, 1);
  if (model.EditMode == kModeFree) SetFreedom(model, *node, 0, 0);
  return PressResult::kEdited;
}

PressResult LoadSet(Model& model, Single x, Single y) {
  const std::optional<int> node = MeshNodeAt(model, model.NodeLoad.First(), x, y);
  if (!node) return PressResult::kOutside;
  model.NodeLoad(*node, 1) = model.LoadFx;
  model.NodeLoad(*node, 2) = model.LoadFy;
  return PressResult::kEdited;
}

}  // namespace quillane
