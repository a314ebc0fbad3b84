#include "ui/frmImageIndicator.h"

#include <QRadioButton>

namespace quillane {

frmImageIndicator::frmImageIndicator(frmMain& main)
    : Form(main, {"frmImageIndicator", "Graphics"}) {
  LayOutChoice("Choose what you want to show.", {optStressValue, optNeuronValue}, cmdOK);
  Form_Load();
}

void frmImageIndicator::Form_Load() {
  QRadioButton* shown =
      Main().model().DisplayMode == kShowPotential ? optNeuronValue : optStressValue;
  shown->setChecked(true);
  shown->setFocus();
}

void frmImageIndicator::cmdOK_Click() {
  Main().model().DisplayMode = optStressValue->isChecked() ? kShowStress : kShowPotential;
  Main().ShowMap();
  Unload();
}

}  // namespace quillane
