// Saving of the model.
#include "ui/frmSave.h"

#include <QPushButton>

#include "model/model_file.h"
#include "ui/frmMain.h"

namespace quillane {

frmSave::frmSave(frmMain& main) : FileForm(main, "frmSave", "Save Model") {
  connect(cmdSave, &QPushButton::clicked, this, &frmSave::cmdSave_Click);
  Complete(cmdSave);
}

void frmSave::cmdSave_Click() {
  Trapped([this] { SaveModelFile(Main().model(), FullPath()); });
}

}  // namespace quillane
