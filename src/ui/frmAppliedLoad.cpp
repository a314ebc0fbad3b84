// Entry of the force.
#include "ui/frmAppliedLoad.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "model/number_text.h"
#include "ui/domain_mode.h"
#include "ui/frmMain.h"

namespace quillane {

frmAppliedLoad::frmAppliedLoad(frmMain& main) : Form(main, "frmAppliedLoad", "Applied Load") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(OptionFrame({optLoadOn, optLoadOff}));
  rows->addLayout(FieldGrid({{"", "Force-X: ", txtLoadX, ""}, {"", "Force-Y: ", txtLoadY, ""}}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmAppliedLoad::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmAppliedLoad::cmdExit_Click);
  Form_Load();
}

void frmAppliedLoad::Form_Load() {
  Model& model = Main().model();
  model.EditMode = kModeNothing;
  optLoadOff->setChecked(true);
  txtLoadX->setText(QString::fromStdString(GeneralText(model.LoadFx)));
  txtLoadY->setText(QString::fromStdString(GeneralText(model.LoadFy)));
  FocusText(txtLoadX);
}

void frmAppliedLoad::cmdOK_Click() {
  Main().Guarded([this] {
    Model& model = Main().model();
    model.LoadFx = LeadingNumber(TextOf(txtLoadX), "the force in x");
    model.LoadFy = LeadingNumber(TextOf(txtLoadY), "the force in y");
    if (optLoadOn->isChecked()) SetDomainMode(*this, model, kModeLoad);
    Main().SetUpDateCaption(
        QString::fromStdString("x方向荷重成分 = " + GeneralText(model.LoadFx) +
                               "N   y方向荷重成分 = " + GeneralText(model.LoadFy) + "N"));
  });
  Unload();
}

}  // namespace quillane
