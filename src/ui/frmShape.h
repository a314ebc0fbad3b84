// The dialog that chooses what presses on the canvas draw.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Shape": presses draw the design domain or rectangles of cells.
class frmShape : public ModeForm {
 public:
  explicit frmShape(frmMain& main)
      : ModeForm(main, {"frmShape", "Shape", "cmdCancel"}, "Choose what you want to draw.",
                 {{"optDesignDomain", "Setup Design Domain", kModeDomain},
                  {"optAddElements", "Add Design Structural Elements", kModeDesign},
                  {"optRemoveElements", "Delete Structural Elements", kModeRemove},
                  {"optAddNonDesignElements", "Add Non-Design Structural Elements", kModeNonDesign},
                  {"optDeleteDesignDomain", "Delete Design Domain", kModeCutOut},
                  {"optDoNot", "Nothing", kModeNothing}}) {}
};

}  // namespace quillane
