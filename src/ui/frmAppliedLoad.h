// The dialog that takes the force which presses on nodes apply.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Applied Load": loading it ends the editing mode, OK stores the force and, where chosen, lets
/// presses apply it. Typing a force chooses that.
class frmAppliedLoad : public Form {
  Q_OBJECT

 public:
  explicit frmAppliedLoad(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QRadioButton* optLoadOn = Option("optLoadOn", "Specify the applied loads");
  QRadioButton* optLoadOff = Option("optLoadOff", "Nothing");
  QLineEdit* txtLoadX = NumberBox("txtLoadX");
  QLineEdit* txtLoadY = NumberBox("txtLoadY");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmAppliedLoad::cmdOK_Click);
};

}  // namespace quillane
