#include "ui/frmAppliedLoad.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include "edit/settings.h"
#include "model/number_text.h"
#include "ui/error_text.h"

namespace quillane {

frmAppliedLoad::frmAppliedLoad(frmMain& main) : Form(main, "frmAppliedLoad", "Applied Load") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(OptionFrame({optLoadOn, optLoadOff}));
  rows->addLayout(FieldGrid({{"", "Force-X: ", txtLoadX, ""}, {"", "Force-Y: ", txtLoadY, ""}}));
  rows->addLayout(ButtonRow(cmdOK));
  for (const QLineEdit* box : {txtLoadX, txtLoadY}) {
    connect(box, &QLineEdit::textEdited, optLoadOn, [this] { optLoadOn->setChecked(true); });
  }
  Form_Load();
}

void frmAppliedLoad::Form_Load() {
  const Model& model = Main().model();
  Main().SetEditMode(*this, kModeNothing);
  optLoadOff->setChecked(true);
  txtLoadX->setText(QString::fromStdString(GeneralText(model.LoadFx)));
  txtLoadY->setText(QString::fromStdString(GeneralText(model.LoadFy)));
  FocusText(txtLoadX);
}

void frmAppliedLoad::cmdOK_Click() {
  Model& model = Main().model();
  if (const RefusedIndex refused = SetAppliedLoad(model, TextOf(txtLoadX), TextOf(txtLoadY))) {
    return Refuse(*refused == 0 ? txtLoadX : txtLoadY, TooLargeText());
  }
  if (optLoadOn->isChecked()) Main().SetEditMode(*this, kModeLoad);
  Main().SetUpDateCaption(
      QString::fromStdString("x方向荷重成分 = " + GeneralText(model.LoadFx) +
                             "N   y方向荷重成分 = " + GeneralText(model.LoadFy) + "N"));
  Unload();
}

}  // namespace quillane
