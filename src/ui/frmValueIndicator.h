// The dialog that chooses which value a press on the canvas reads out.
#pragma once

#include "ui/form.h"

namespace quillane {

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
