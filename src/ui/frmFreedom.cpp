// Choice of the support.
#include "ui/frmFreedom.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/domain_mode.h"
#include "ui/frmMain.h"

namespace quillane {

frmFreedom::frmFreedom(frmMain& main) : Form(main, "frmFreedom", "Freedom Conditions") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose individual node settings."));
  rows->addWidget(OptionFrame({optFixX, optFixY, optFixXY, optFree}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmFreedom::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmFreedom::cmdExit_Click);
  Form_Load();
}

void frmFreedom::Form_Load() {
  Main().model().EditMode = kModeNothing;
  optFree->setChecked(true);
  optFree->setFocus();
}

void frmFreedom::cmdOK_Click() {
  Model& model = Main().model();
  if (optFixX->isChecked()) SetDomainMode(*this, model, kModeFixX);
  if (optFixY->isChecked()) SetDomainMode(*this, model, kModeFixY);
  if (optFixXY->isChecked()) SetDomainMode(*this, model, kModeFixXY);
  if (optFree->isChecked()) SetDomainMode(*this, model, kModeFree);
  Unload();
}

}  // namespace quillane
