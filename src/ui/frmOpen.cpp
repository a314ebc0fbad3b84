#include "ui/frmOpen.h"

namespace quillane {

frmOpen::frmOpen(frmMain& main) : FileForm(main, "frmOpen", "Open Model") { Complete(cmdOpen); }

void frmOpen::cmdOpen_Click() {
  Trapped([this] { Main().OpenModel(FullPath()); });
}

}  // namespace quillane
