// The dialog that opens a model file.
#pragma once

#include "ui/file_form.h"

namespace quillane {

/// "Open Model": replaces the model, rebuilds the view and ends what belonged to the old one.
class frmOpen : public FileForm {
  Q_OBJECT

 public:
  explicit frmOpen(frmMain& main);

 private:
  void cmdOpen_Click();

  QPushButton* cmdOpen = Button("cmdOpen", "Open", &frmOpen::cmdOpen_Click);
};

}  // namespace quillane
