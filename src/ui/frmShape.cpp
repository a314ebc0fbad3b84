#include "ui/frmShape.h"

#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quillane {

frmShape::frmShape(frmMain& main) : Form(main, "frmShape", "Shape", "cmdCancel") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose what you want to draw."));
  rows->addWidget(OptionFrame({optDesignDomain, optAddElements, optRemoveElements,
                               optAddNonDesignElements, optDeleteDesignDomain, optDoNot}));
  rows->addLayout(ButtonRow(cmdOK));
  OnClick(cmdOK, &frmShape::cmdOK_Click);
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
