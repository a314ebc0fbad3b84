// The dialog for the plate's material and thickness.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Design Property": loading it ends the editing mode, OK stores the three values as typed.
class frmMaterial : public Form {
  Q_OBJECT

 public:
  explicit frmMaterial(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QLineEdit* txtEmod = NumberBox("txtEmod");
  QLineEdit* txtThickness = NumberBox("txtThickness");
  QLineEdit* txtPoison = NumberBox("txtPoison");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmMaterial::cmdOK_Click);
};

}  // namespace quillane
