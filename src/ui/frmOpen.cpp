// Opening of a model.
#include "ui/frmOpen.h"

#include <QPushButton>

#include "model/model_file.h"
#include "ui/frmMain.h"

namespace quillane {

frmOpen::frmOpen(frmMain& main) : FileForm(main, "frmOpen", "Open Model") {
  connect(cmdOpen, &QPushButton::clicked, this, &frmOpen::cmdOpen_Click);
  Complete(cmdOpen);
}

void frmOpen::cmdOpen_Click() {
  Trapped([this] {
    Model& model = Main().model();
    OpenModelFile(model, FullPath());
    Main().FitCanvasView();
    model.DomainDefined = kTrue;
    Main().DrawCanvas();
    Main().SetTitleAfterOpening();
    Main().SetResultMenusEnabled(false);
    if (model.HistoryRecording != 0) Main().history().Close(model);
  });
}

}  // namespace quillane
