// The dialogs whose options choose what presses on the canvas do.
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

/// "Values": presses read out a value. "Nothing" keeps the edit mode.
class frmValueIndicator : public ModeForm {
 public:
  explicit frmValueIndicator(frmMain& main)
      : ModeForm(main, {"frmValueIndicator", "Values"}, "Choose what you want to check.",
                 {{"optLoadValue", "Applied Load value", kModeLoadValue},
                  {"optDisplacementValue", "Displacement value", kModeDisplacement},
                  {"optStressValue", "von Mises Stress value", kModeStress},
                  {"optNeuronValue", "Potential value", kModePotential},
                  {"optDoNot", "Nothing", std::nullopt}}) {}
};

}  // namespace quillane
