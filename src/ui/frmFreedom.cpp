#include "ui/frmFreedom.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quillane {

frmFreedom::frmFreedom(frmMain& main) : Form(main, "frmFreedom", "Freedom Conditions") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose individual node settings."));
  rows->addWidget(OptionFrame({optFixX, optFixY, optFixXY, optFree}));
  rows->addLayout(ButtonRow(cmdOK));
  OnClick(cmdOK, &frmFreedom::cmdOK_Click);
  Form_Load();
}

void frmFreedom::Form_Load() {
  Main().SetEditMode(*this, kModeNothing);
  optFree->setChecked(true);
  optFree->setFocus();
}

void frmFreedom::cmdOK_Click() {
  if (optFixX->isChecked()) Main().SetEditMode(*this, kModeFixX);
  if (optFixY->isChecked()) Main().SetEditMode(*this, kModeFixY);
  if (optFixXY->isChecked()) Main().SetEditMode(*this, kModeFixXY);
  if (optFree->isChecked()) Main().SetEditMode(*this, kModeFree);
  Unload();
}

}  // namespace quillane
