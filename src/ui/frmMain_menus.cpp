// The menu tree and the handlers of its items.
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
#include "ui/menu_bar.h"

namespace quillane {

template <class Dialog>
void frmMain::mnuDialog_Click() {
  Dialog(*this).exec();
}

void frmMain::mnuShape_Click() {
  WriteSummary();
  mnuDialog_Click<frmShape>();
}

void frmMain::BuildMenus() {
  auto* bar = new MenuBar(this);
  setMenuBar(bar);
  const auto add = [this](QWidget* parent, const char* name, const char* caption,
                          void (frmMain::*handler)()) {
    connect(AddItem(parent, name, caption), &QAction::triggered, this, OrWarn(this, handler));
  };

  QMenu* file = bar->AddMenu("mnuFile", "File");
  add(file, "mnuOpen", "Open model", &frmMain::mnuDialog_Click<frmOpen>);
  add(file, "mnuSave", "Save model", &frmMain::mnuDialog_Click<frmSave>);
  add(file, "mnuImageCopy", "Copy image", &frmMain::mnuImageCopy_Click);
  add(file, "mnuHistory", "Record history", &frmMain::mnuHistory_Click);
  AddSeparator(file, "separater2");
  add(file, "mnuExit", "Exit", &frmMain::mnuExit_Click);

  QMenu* graphic = bar->AddMenu("mnuGraphicArea", "Graphic");
  add(graphic, "mnuWidth", "Width and Mesh Density", &frmMain::mnuDialog_Click<frmWidth>);
  add(graphic, "mnuMoveOrigin", "Move Origin", &frmMain::mnuMoveOrigin_Click);
  AddSeparator(graphic, "separater3");
  add(graphic, "mnuImageIndicator", "Graphics", &frmMain::mnuDialog_Click<frmImageIndicator>);
  add(graphic, "mnuValueIndicator", "Values", &frmMain::mnuDialog_Click<frmValueIndicator>);
  AddSeparator(graphic, "separater5");
  add(graphic, "mnuClear", "Clear Model", &frmMain::mnuClear_Click);

  add(bar, "mnuShape", "Shape", &frmMain::mnuShape_Click);

  QMenu* parameter = bar->AddMenu("mnuAnalysis", "Parameter");
  add(parameter, "mnuMaterial", "Design Property", &frmMain::mnuDialog_Click<frmMaterial>);
  add(parameter, "mnuFreedom", "Freedom Conditions", &frmMain::mnuDialog_Click<frmFreedom>);
  add(parameter, "mnuAppliedLoad", "Applied Load", &frmMain::mnuDialog_Click<frmAppliedLoad>);
  add(parameter, "mnuDrivingParameter", "Optimizaion Parameter",
      &frmMain::mnuDialog_Click<frmController>);

  add(bar, "mnuStressAnalysis", "FEA", &frmMain::mnuStressAnalysis_Click);
  add(bar, "mnuOptimization", "Optimization", &frmMain::mnuDialog_Click<frmOptimization>);

  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &frmMain::DropCorner);
}

void frmMain::SetResultMenusEnabled(bool enabled) {
  for (const char* item : {"mnuOptimization", "mnuHistory"}) {
    findChild<QAction*>(item)->setEnabled(enabled);
  }
}

}  // namespace quillane
