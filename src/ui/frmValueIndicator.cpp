// Choice of the value read-out.
#include "ui/frmValueIndicator.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/frmMain.h"

namespace quillane {

frmValueIndicator::frmValueIndicator(frmMain& main) : Form(main, "frmValueIndicator", "Values") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose what you want to check."));
  rows->addWidget(
      OptionFrame({optLoadValue, optDisplacementValue, optStressValue, optNeuronValue, optDoNot}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmValueIndicator::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmValueIndicator::cmdExit_Click);
  Form_Load();
}

void frmValueIndicator::Form_Load() {
  optDoNot->setChecked(true);
  optDoNot->setFocus();
}

void frmValueIndicator::cmdOK_Click() {
  Model& model = Main().model();
  if (optDisplacementValue->isChecked()) model.EditMode = kModeDisplacement;
  if (optStressValue->isChecked()) model.EditMode = kModeStress;
  if (optNeuronValue->isChecked()) model.EditMode = kModePotential;
  if (optLoadValue->isChecked()) model.EditMode = kModeLoadValue;
  Unload();
}

}  // namespace quillane
