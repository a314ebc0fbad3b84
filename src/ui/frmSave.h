// The dialog that saves the model to a file.
#pragma once

#include "ui/file_form.h"

namespace quillane {

/// "Save Model": writes the whole model; an existing file is replaced without a question.
class frmSave : public FileForm {
  Q_OBJECT

 public:
  explicit frmSave(frmMain& main);

 private:
  void cmdSave_Click();

  QPushButton* cmdSave = Button("cmdSave", "Save", &frmSave::cmdSave_Click);
};

}  // namespace quillane
