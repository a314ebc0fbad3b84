// The dialog that picks what presses on the canvas draw.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Shape": design domain and rectangles of cells. It opens on "Nothing".
class frmShape : public Form {
  Q_OBJECT

 public:
  explicit frmShape(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QRadioButton* optDesignDomain = Option("optDesignDomain", "Setup Design Domain");
  QRadioButton* optAddElements = Option("optAddElements", "Add Design Structural Elements");
  QRadioButton* optRemoveElements = Option("optRemoveElements", "Delete Structural Elements");
  QRadioButton* optAddNonDesignElements =
      Option("optAddNonDesignElements", "Add Non-Design Structural Elements");
  QRadioButton* optDeleteDesignDomain = Option("optDeleteDesignDomain", "Delete Design Domain");
  QRadioButton* optDoNot = Option("optDoNot", "Nothing");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmShape::cmdOK_Click);
};

}  // namespace quillane
