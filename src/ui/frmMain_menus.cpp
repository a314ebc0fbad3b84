// The menu bar of the main window and the commands that only open a dialog.
#include <QMenuBar>
#include <QProxyStyle>
#include <QShortcut>
#include <QStyleOption>

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

QMenu* AddMenu(QMenuBar* bar, const char* name, const char* caption) {
  QMenu* menu = bar->addMenu(QLatin1String(caption));
  menu->setObjectName(QLatin1String(name));
  menu->menuAction()->setObjectName(QLatin1String(name));
  return menu;
}

/// Shows the item that the keyboard is on, which a style may show only while its menu is open.
class MenuBarStyle : public QProxyStyle {
 public:
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuBarItem || item == nullptr || !(item->state & State_Selected)) {
      return QProxyStyle::drawControl(element, option, painter, widget);
    }
    QStyleOptionMenuItem shown = *item;
    shown.state |= State_Sunken;
    QProxyStyle::drawControl(element, &shown, painter, widget);
  }
};

void AddSeparator(QMenu* menu, const char* name) {
  menu->addSeparator()->setObjectName(QLatin1String(name));
}

}  // namespace

void frmMain::BuildMenus() {
  const auto add = [this](auto* parent, const char* name, const char* caption,
                          void (frmMain::*handler)()) {
    QAction* item = parent->addAction(QLatin1String(caption));
    item->setObjectName(QLatin1String(name));
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this, Guarded(this, handler));
    return item;
  };
  QMenuBar* bar = menuBar();
  bar->setNativeMenuBar(false);
  auto* style = new MenuBarStyle;
  style->setParent(bar);
  bar->setStyle(style);
  QMenu* file = AddMenu(bar, "mnuFile", "File");
  add(file, "mnuOpen", "Open model", &frmMain::mnuOpen_Click);
  add(file, "mnuSave", "Save model", &frmMain::mnuSave_Click);
  add(file, "mnuImageCopy", "Copy image", &frmMain::mnuImageCopy_Click);
  mnuHistory = add(file, "mnuHistory", "Record history", &frmMain::mnuHistory_Click);
  AddSeparator(file, "separater2");
  add(file, "mnuExit", "Exit", &frmMain::mnuExit_Click);

  QMenu* graphic = AddMenu(bar, "mnuGraphicArea", "Graphic");
  add(graphic, "mnuWidth", "Width and Mesh Density", &frmMain::mnuWidth_Click);
  add(graphic, "mnuMoveOrigin", "Move Origin", &frmMain::mnuMoveOrigin_Click);
  AddSeparator(graphic, "separater3");
  add(graphic, "mnuImageIndicator", "Graphics", &frmMain::mnuImageIndicator_Click);
  add(graphic, "mnuValueIndicator", "Values", &frmMain::mnuValueIndicator_Click);
  AddSeparator(graphic, "separater5");
  add(graphic, "mnuClear", "Clear Model", &frmMain::mnuClear_Click);

  add(bar, "mnuShape", "Shape", &frmMain::mnuShape_Click);

  QMenu* parameter = AddMenu(bar, "mnuAnalysis", "Parameter");
  add(parameter, "mnuMaterial", "Design Property", &frmMain::mnuMaterial_Click);
  add(parameter, "mnuFreedom", "Freedom Conditions", &frmMain::mnuFreedom_Click);
  add(parameter, "mnuAppliedLoad", "Applied Load", &frmMain::mnuAppliedLoad_Click);
  add(parameter, "mnuDrivingParameter", "Optimizaion Parameter",
      &frmMain::mnuDrivingParameter_Click);

  add(bar, "mnuStressAnalysis", "FEA", &frmMain::mnuStressAnalysis_Click);
  mnuOptimization = add(bar, "mnuOptimization", "Optimization", &frmMain::mnuOptimization_Click);

  const auto* key = new QShortcut(Qt::Key_F10, this);
  connect(key, &QShortcut::activated, bar,
          [bar, file] { bar->setActiveAction(file->menuAction()); });
}

void frmMain::SetResultMenusEnabled(bool enabled) {
  mnuOptimization->setEnabled(enabled);
  mnuHistory->setEnabled(enabled);
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
