#include "ui/frmShape.h"

#include <QRadioButton>

namespace quillane {

frmShape::frmShape(frmMain& main) : Form(main, "frmShape", "Shape", "cmdCancel") {
  LayOutChoice("Choose what you want to draw.",
               {optDesignDomain, optAddElements, optRemoveElements, optAddNonDesignElements,
                optDeleteDesignDomain, optDoNot},
               cmdOK);
  Form_Load();
}

void frmShape::Form_Load() {
  optDoNot->setChecked(true);
  optDoNot->setFocus();
}

void frmShape::cmdOK_Click() {
  if (optDesignDomain->isChecked()) Main().SetEditMode(*this, kModeDomain);
  if (optAddElements->isChecked()) Main().SetEditMode(*this, kModeDesign);
  if (optRemoveElements->isChecked()) Main().SetEditMode(*this, kModeRemove);
  if (optAddNonDesignElements->isChecked()) Main().SetEditMode(*this, kModeNonDesign);
  if (optDeleteDesignDomain->isChecked()) Main().SetEditMode(*this, kModeCutOut);
  if (optDoNot->isChecked()) Main().SetEditMode(*this, kModeNothing);
  Unload();
}

}  // namespace quillane
