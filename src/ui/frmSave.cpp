#include "ui/frmSave.h"

namespace quillane {

frmSave::frmSave(frmMain& main) : FileForm(main, "frmSave", "Save Model") { Complete(cmdSave); }

void frmSave::cmdSave_Click() {
  Trapped([this] { Main().SaveModel(FullPath()); });
}

}  // namespace quillane
