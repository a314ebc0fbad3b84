#include "ui/frmSave.h"

namespace quillane {

frmSave::frmSave(frmMain& main) : FileForm(main, {"frmSave", "Save Model"}) { Complete(cmdSave); }

void frmSave::cmdSave_Click() {
  RunOrStayOpen([this](const std::filesystem::path& path) { Main().SaveModel(path); });
}

}  // namespace quillane
