// The dialog for the width that the canvas shows and the size of a cell.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Width and Mesh Density": loading it ends the editing mode, OK stores the two values and sets
/// the view up anew. Values that no grid can be drawn with are refused.
class frmWidth : public Form {
  Q_OBJECT

 public:
  explicit frmWidth(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QLineEdit* txtWidth = NumberBox("txtWidth", "1000", NumberRule::kAboveZero);
  QLineEdit* txtUnitGrid = NumberBox("txtUnitGrid", "1000", NumberRule::kAboveZero);
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmWidth::cmdOK_Click);
};

}  // namespace quillane
