// Choice of the shape operation.
#include "ui/frmShape.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/domain_mode.h"
#include "ui/frmMain.h"

namespace quillane {

frmShape::frmShape(frmMain& main) : Form(main, "frmShape", "Shape") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose what you want to draw."));
  rows->addWidget(OptionFrame({optDesignDomain, optAddElements, optRemoveElements,
                               optAddNonDesignElements, optDeleteDesignDomain, optDoNot}));
  rows->addLayout(ButtonRow({cmdOK, cmdCancel}));
  connect(cmdOK, &QPushButton::clicked, this, &frmShape::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmShape::cmdCancel_Click);
  Form_Load();
}

void frmShape::Form_Load() {
  optDoNot->setChecked(true);
  optDoNot->setFocus();
}

void frmShape::cmdOK_Click() {
  Model& model = Main().model();
  model.ClickCount = 0;
  if (optDesignDomain->isChecked()) model.EditMode = kModeDomain;
  if (optAddElements->isChecked()) SetDomainMode(*this, model, kModeDesign);
  if (optRemoveElements->isChecked()) SetDomainMode(*this, model, kModeRemove);
  if (optAddNonDesignElements->isChecked()) SetDomainMode(*this, model, kModeNonDesign);
  if (optDeleteDesignDomain->isChecked()) SetDomainMode(*this, model, kModeCutOut);
  if (optDoNot->isChecked()) model.EditMode = kModeNothing;
  Unload();
}

}  // namespace quillane
