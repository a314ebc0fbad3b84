#include "ui/frmValueIndicator.h"

#include <QRadioButton>

namespace quillane {

frmValueIndicator::frmValueIndicator(frmMain& main) : Form(main, "frmValueIndicator", "Values") {
  LayOutChoice("Choose what you want to check.",
               {optLoadValue, optDisplacementValue, optStressValue, optNeuronValue, optDoNot},
               cmdOK);
  Form_Load();
}

void frmValueIndicator::Form_Load() {
  optDoNot->setChecked(true);
  optDoNot->setFocus();
}

void frmValueIndicator::cmdOK_Click() {
  if (optDisplacementValue->isChecked()) Main().SetEditMode(*this, kModeDisplacement);
  if (optStressValue->isChecked()) Main().SetEditMode(*this, kModeStress);
  if (optNeuronValue->isChecked()) Main().SetEditMode(*this, kModePotential);
  if (optLoadValue->isChecked()) Main().SetEditMode(*this, kModeLoadValue);
  Unload();
}

}  // namespace quillane
