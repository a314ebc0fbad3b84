// The dialog for the parameters of the optimization.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Optimization Parameter": loading it ends the editing mode, OK stores the three values as typed.
class frmController : public Form {
  Q_OBJECT

 public:
  explicit frmController(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QLineEdit* txtDpStress = NumberBox("txtDpStress");
  QLineEdit* txtDpEpsilon = NumberBox("txtDpEpsilon");
  QLineEdit* txtDpLambda = NumberBox("txtDpLambda");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmController::cmdOK_Click);
};

}  // namespace quillane
