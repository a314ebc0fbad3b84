// The menu bar of the main window and the commands that only open a dialog.
#include <QMenuBar>

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

namespace quillane {
namespace {

/// A fresh dialog at each use, modal to the application.
template <class Dialog>
void ShowModally(frmMain& main) {
  Dialog(main).exec();
}

void AddSeparator(QMenu* menu, const char* name) {
  menu->addSeparator()->setObjectName(QLatin1String(name));
}

}  // namespace

QMenu* frmMain::AddMenu(const char* name, const char* caption) {
  QMenu* menu = menuBar()->addMenu(QLatin1String(caption));
  menu->setObjectName(QLatin1String(name));
  menu->menuAction()->setObjectName(QLatin1String(name));
  return menu;
}

template <class Parent>
QAction* frmMain::AddItem(Parent* parent, const char* name, const char* caption, Handler handler) {
  QAction* item = parent->addAction(QLatin1String(caption));
  item->setObjectName(QLatin1String(name));
  item->setMenuRole(QAction::NoRole);
  connect(item, &QAction::triggered, this,
          [this, handler] { Guarded([&] { (this->*handler)(); }); });
  return item;
}

void frmMain::BuildMenus() {
  menuBar()->setNativeMenuBar(false);
  QMenu* file = AddMenu("mnuFile", "File");
  AddItem(file, "mnuOpen", "Open model", &frmMain::mnuOpen_Click);
  AddItem(file, "mnuSave", "Save model", &frmMain::mnuSave_Click);
  AddItem(file, "mnuImageCopy", "Copy image", &frmMain::mnuImageCopy_Click);
  mnuHistory_ = AddItem(file, "mnuHistory", "Record history", &frmMain::mnuHistory_Click);
  AddSeparator(file, "separater2");
  AddItem(file, "mnuExit", "Exit", &frmMain::mnuExit_Click);

  QMenu* graphic = AddMenu("mnuGraphicArea", "Graphic");
  AddItem(graphic, "mnuWidth", "Width and Mesh Density", &frmMain::mnuWidth_Click);
  AddItem(graphic, "mnuMoveOrigin", "Move Origin", &frmMain::mnuMoveOrigin_Click);
  AddSeparator(graphic, "separater3");
  AddItem(graphic, "mnuImageIndicator", "Graphics", &frmMain::mnuImageIndicator_Click);
  AddItem(graphic, "mnuValueIndicator", "Values", &frmMain::mnuValueIndicator_Click);
  AddSeparator(graphic, "separater5");
  AddItem(graphic, "mnuClear", "Clear Model", &frmMain::mnuClear_Click);

  AddItem(menuBar(), "mnuShape", "Shape", &frmMain::mnuShape_Click);

  QMenu* parameter = AddMenu("mnuAnalysis", "Parameter");
  AddItem(parameter, "mnuMaterial", "Design Property", &frmMain::mnuMaterial_Click);
  AddItem(parameter, "mnuFreedom", "Freedom Conditions", &frmMain::mnuFreedom_Click);
  AddItem(parameter, "mnuAppliedLoad", "Applied Load", &frmMain::mnuAppliedLoad_Click);
  AddItem(parameter, "mnuDrivingParameter", "Optimizaion Parameter",
          &frmMain::mnuDrivingParameter_Click);

  AddItem(menuBar(), "mnuStressAnalysis", "FEA", &frmMain::mnuStressAnalysis_Click);
  mnuOptimization_ =
      AddItem(menuBar(), "mnuOptimization", "Optimization", &frmMain::mnuOptimization_Click);
}

void frmMain::SetResultMenusEnabled(bool enabled) {
  mnuOptimization_->setEnabled(enabled);
  mnuHistory_->setEnabled(enabled);
}

void frmMain::mnuOpen_Click() { ShowModally<frmOpen>(*this); }
void frmMain::mnuSave_Click() { ShowModally<frmSave>(*this); }
void frmMain::mnuWidth_Click() { ShowModally<frmWidth>(*this); }
void frmMain::mnuImageIndicator_Click() { ShowModally<frmImageIndicator>(*this); }
void frmMain::mnuValueIndicator_Click() { ShowModally<frmValueIndicator>(*this); }
void frmMain::mnuMaterial_Click() { ShowModally<frmMaterial>(*this); }
void frmMain::mnuFreedom_Click() { ShowModally<frmFreedom>(*this); }
void frmMain::mnuAppliedLoad_Click() { ShowModally<frmAppliedLoad>(*this); }
void frmMain::mnuDrivingParameter_Click() { ShowModally<frmController>(*this); }
void frmMain::mnuOptimization_Click() { ShowModally<frmOptimization>(*this); }

void frmMain::mnuShape_Click() {
  WriteSummary();
  ShowModally<frmShape>(*this);
}

}  // namespace quillane
