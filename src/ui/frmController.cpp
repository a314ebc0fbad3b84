// Entry of the optimization parameters.
#include "ui/frmController.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/number_text.h"
#include "optimize/parameters.h"
#include "ui/frmMain.h"

namespace quillane {

frmController::frmController(frmMain& main)
    : Form(main, "frmController", "Optimization Parameter") {
  QVBoxLayout* rows = Rows();
  rows->addLayout(
      FieldGrid({{"Specify a target value of stress", "von Mises Stress:", txtDpStress, ""},
                 {"Specify threshold value Epsilon", "Epsilon:", txtDpEpsilon, ""},
                 {"and forget coefficient Lambda.", "Lambda:", txtDpLambda, ""}}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmController::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmController::cmdExit_Click);
  Form_Load();
}

void frmController::Form_Load() {
  Model& model = Main().model();
  model.EditMode = kModeNothing;
  txtDpStress->setText(QString::fromStdString(GeneralText(model.StressTarget)));
  txtDpEpsilon->setText(QString::fromStdString(GeneralText(int{model.Epsilon})));
  txtDpLambda->setText(QString::fromStdString(GeneralText(model.Lambda)));
  FocusText(txtDpStress);
}

void frmController::cmdOK_Click() {
  Main().Guarded([this] {
    Model& model = Main().model();
    SetParameters(model, TextOf(txtDpStress), TextOf(txtDpEpsilon), TextOf(txtDpLambda));
    Main().SetUpDateCaption(QString::fromStdString(ParameterSummary(model)));
  });
  Unload();
}

}  // namespace quillane
