#include "ui/frmController.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "edit/settings.h"
#include "model/number_text.h"
#include "ui/error_text.h"

namespace quillane {

frmController::frmController(frmMain& main)
    : Form(main, "frmController", "Optimization Parameter") {
  QVBoxLayout* rows = Rows();
  rows->addLayout(
      FieldGrid({{"Specify a target value of stress", "von Mises Stress:", txtDpStress, ""},
                 {"Specify threshold value Epsilon", "Epsilon:", txtDpEpsilon, ""},
                 {"and forget coefficient Lambda.", "Lambda:", txtDpLambda, ""}}));
  rows->addLayout(ButtonRow(cmdOK));
  Form_Load();
}

void frmController::Form_Load() {
  const Model& model = Main().model();
  Main().SetEditMode(*this, kModeNothing);
  txtDpStress->setText(QString::fromStdString(GeneralText(model.StressTarget)));
  txtDpEpsilon->setText(QString::fromStdString(GeneralText(int{model.Epsilon})));
  txtDpLambda->setText(QString::fromStdString(GeneralText(model.Lambda)));
  FocusText(txtDpStress);
}

void frmController::cmdOK_Click() {
  Model& model = Main().model();
  if (const RefusedIndex refused =
          SetParameters(model, TextOf(txtDpStress), TextOf(txtDpEpsilon), TextOf(txtDpLambda))) {
    QLineEdit* const boxes[] = {txtDpStress, txtDpEpsilon, txtDpLambda};
    return Refuse(boxes[*refused], TooLargeText());
  }
  Main().SetUpDateCaption(QString::fromStdString(
      "Stress Target = " + GeneralText(model.StressTarget) + "MPa   Epsilon = " +
      GeneralText(int{model.Epsilon}) + "   Lambda = " + GeneralText(model.Lambda)));
  Unload();
}

}  // namespace quillane
