#include "ui/frmFreedom.h"

#include <QRadioButton>

namespace quillane {

frmFreedom::frmFreedom(frmMain& main) : Form(main, "frmFreedom", "Freedom Conditions") {
  LayOutChoice("Choose individual node settings.", {optFixX, optFixY, optFixXY, optFree}, cmdOK);
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
