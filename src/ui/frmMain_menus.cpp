// Connection of the menu items to their handlers.
#include <QAction>
#include <QMenuBar>
#include <QShortcut>

#include "ui/frmAppliedLoad.h"
#include "ui/frmController.h"
#include "ui/frmFreedom.h"
#include "ui/frmImageIndicator.h"
#include "ui/frmMain.h"
#include "ui/frmMaterial.h"
#include "ui/frmOpen.h"
#include "ui/frmOptimization.h"
#include "ui/frmSave.h"
#include "ui/frmShape.h"
#include "ui/frmValueIndicator.h"
#include "ui/frmWidth.h"
#include "ui/main_menu.h"

namespace quillane {

template <class Dialog>
void frmMain::mnuDialog_Click() {
  Dialog(*this).exec();
}

void frmMain::mnuShape_Click() {
  WriteSummary();
  mnuDialog_Click<frmShape>();
}

void frmMain::ConnectMenus() {
  BuildMainMenu(menuBar());
  const std::pair<const char*, void (frmMain::*)()> handlers[] = {
      {"mnuOpen", &frmMain::mnuDialog_Click<frmOpen>},
      {"mnuSave", &frmMain::mnuDialog_Click<frmSave>},
      {"mnuImageCopy", &frmMain::mnuImageCopy_Click},
      {"mnuHistory", &frmMain::mnuHistory_Click},
      {"mnuExit", &frmMain::mnuExit_Click},
      {"mnuWidth", &frmMain::mnuDialog_Click<frmWidth>},
      {"mnuMoveOrigin", &frmMain::mnuMoveOrigin_Click},
      {"mnuImageIndicator", &frmMain::mnuDialog_Click<frmImageIndicator>},
      {"mnuValueIndicator", &frmMain::mnuDialog_Click<frmValueIndicator>},
      {"mnuClear", &frmMain::mnuClear_Click},
      {"mnuShape", &frmMain::mnuShape_Click},
      {"mnuMaterial", &frmMain::mnuDialog_Click<frmMaterial>},
      {"mnuFreedom", &frmMain::mnuDialog_Click<frmFreedom>},
      {"mnuAppliedLoad", &frmMain::mnuDialog_Click<frmAppliedLoad>},
      {"mnuDrivingParameter", &frmMain::mnuDialog_Click<frmController>},
      {"mnuStressAnalysis", &frmMain::mnuStressAnalysis_Click},
      {"mnuOptimization", &frmMain::mnuDialog_Click<frmOptimization>}};
  for (const auto& [name, handler] : handlers) {
    connect(findChild<QAction*>(name), &QAction::triggered, this, OrWarn(this, handler));
  }
  const auto* escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, &frmMain::DropCorner);
}

void frmMain::SetResultMenusEnabled(bool enabled) {
  for (const char* item : {"mnuOptimization", "mnuHistory"}) {
    findChild<QAction*>(item)->setEnabled(enabled);
  }
}

}  // namespace quillane
