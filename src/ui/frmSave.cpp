#include "ui/frmSave.h"

#include "model/model_file.h"

namespace quillane {

frmSave::frmSave(frmMain& main) : FileForm(main, "frmSave", "Save Model") { Complete(cmdSave); }

void frmSave::cmdSave_Click() {
  Trapped([this] { SaveModelFile(Main().model(), FullPath()); });
}

}  // namespace quillane
