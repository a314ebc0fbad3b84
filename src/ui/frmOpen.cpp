#include "ui/frmOpen.h"

namespace quillane {

frmOpen::frmOpen(frmMain& main) : FileForm(main, "frmOpen", "Open Model") {
  OnClick(cmdOpen, &frmOpen::cmdOpen_Click);
  Complete(cmdOpen);
}

void frmOpen::cmdOpen_Click() {
  Trapped([this] { Main().OpenModel(FullPath()); });
}

}  // namespace quillane
