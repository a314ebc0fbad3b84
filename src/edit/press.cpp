#include "edit/press.h"

#include "edit/operations.h"

namespace quillane {
namespace {

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
  // Deliberately no else: after an operation that sets another mode a later one may follow in the
  // same press.
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
