#include "ui/frmImageIndicator.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quillane {

frmImageIndicator::frmImageIndicator(frmMain& main) : Form(main, "frmImageIndicator", "Graphics") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose what you want to show."));
  rows->addWidget(OptionFrame({optStressValue, optNeuronValue}));
  rows->addLayout(ButtonRow(cmdOK));
  OnClick(cmdOK, &frmImageIndicator::cmdOK_Click);
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
