// The question for a design domain before anything is put into it.
#include "ui/domain_mode.h"

#include "ui/frmMain.h"

namespace quillane {

void SetDomainMode(QWidget& dialog, Model& model, Integer mode) {
  if (model.DomainDefined == 0) {
    frmMain::Warn(&dialog, QStringLiteral("\r\n設計領域をはじめに入力してください。"));
    return;
  }
  model.EditMode = mode;
}

}  // namespace quillane
