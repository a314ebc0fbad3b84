// The dialog that picks which support presses on nodes set.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Freedom Conditions": loading it ends the editing mode, OK sets the support's own.
class frmFreedom : public Form {
  Q_OBJECT

 public:
  explicit frmFreedom(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QRadioButton* optFixX = Option("optFixX", "X-Displacement Fixed");
  QRadioButton* optFixY = Option("optFixY", "Y-Displacement Fixed");
  QRadioButton* optFixXY = Option("optFixXY", "All Displacement Fixed");
  QRadioButton* optFree = Option("optFree", "Nothing");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmFreedom::cmdOK_Click);
};

}  // namespace quillane
