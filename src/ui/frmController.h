// The dialog for the parameters of the optimization.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Optimization Parameter": loading it ends the editing mode, OK stores the three values as typed.
class frmController : public Form {
  Q_OBJECT

 public:
  explicit frmController(frmMain& main);
  void reject() override { cmdExit_Click(); }

 private:
  void Form_Load();
  void cmdOK_Click();
  void cmdExit_Click() { Unload(); }

  QLineEdit* txtDpStress = NumberBox("txtDpStress");
  QLineEdit* txtDpEpsilon = NumberBox("txtDpEpsilon");
  QLineEdit* txtDpLambda = NumberBox("txtDpLambda");
  QPushButton* cmdOK = Button("cmdOK", "OK");
  QPushButton* cmdExit = Button("cmdExit", "Cancel");
};

}  // namespace quillane
