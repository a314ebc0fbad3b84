#include "ui/frmOpen.h"

namespace quillane {

frmOpen::frmOpen(frmMain& main) : FileForm(main, {"frmOpen", "Open Model"}) { Complete(cmdOpen); }

void frmOpen::cmdOpen_Click() {
  RunOrStayOpen([this](const std::filesystem::path& path) { Main().OpenModel(path); });
}

}  // namespace quillane
