// The dialog that saves the model to a file.
#pragma once

#include "ui/file_form.h"

namespace quillane {

/// "Save Model": writes the whole model; an existing file is replaced without a question.
class frmSave : public FileForm {
 public:
  explicit frmSave(frmMain& main)
      : FileForm(main, {"frmSave", "Save Model"}, "cmdSave", "Save", &frmMain::SaveModel) {}
};

}  // namespace quillane
