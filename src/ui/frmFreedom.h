// The dialog that chooses which support a press gives a node.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Freedom Conditions": presses set the supports of nodes. Loading the dialog ends the edit mode.
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
