// The dialog that opens a model file.
#pragma once

#include "ui/file_form.h"

namespace quillane {

/// "Open Model": replaces the model, rebuilds the view and ends what belonged to the old one.
class frmOpen : public FileForm {
 public:
  explicit frmOpen(frmMain& main)
      : FileForm(main, {"frmOpen", "Open Model"}, "cmdOpen", "Open", &frmMain::OpenModel) {}
};

}  // namespace quillane
