// The dialog that picks which support presses on nodes set.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Freedom Conditions": loading it ends the edit mode.
class frmFreedom : public ModeForm {
 public:
  explicit frmFreedom(frmMain& main)
      : ModeForm(main, {"frmFreedom", "Freedom Conditions"}, "Choose individual node settings.",
                 {{"optFixX", "X-Displacement Fixed", kModeFixX},
                  {"optFixY", "Y-Displacement Fixed", kModeFixY},
                  {"optFixXY", "All Displacement Fixed", kModeFixXY},
                  {"optFree", "Nothing", kModeFree}}) {
    main.SetEditMode(*this, kModeNothing);
  }
};

}  // namespace quillane
