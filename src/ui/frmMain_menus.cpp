// The menu tree and the handlers of its items.
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

/// Highlights the item with the keyboard focus; some styles do so only while its menu is open.
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

QMenu* AddMenu(QMenuBar* bar, const char* name, const char* caption) {
  QMenu* menu = bar->addMenu(caption);
  menu->setObjectName(name);
  menu->menuAction()->setObjectName(name);
  return menu;
}

void AddSeparator(QMenu* menu, const char* name) { menu->addSeparator()->setObjectName(name); }

}  // namespace

template <class Dialog>
void frmMain::mnuDialog_Click() {
  Dialog(*this).exec();
}

void frmMain::mnuShape_Click() {
  WriteSummary();
  mnuDialog_Click<frmShape>();
}

void frmMain::BuildMenus() {
  QMenuBar* bar = menuBar();
  bar->setNativeMenuBar(false);
  auto* style = new MenuBarStyle;
  style->setParent(bar);
  bar->setStyle(style);
  const auto add = [this](QWidget* parent, const char* name, const char* caption,
                          void (frmMain::*handler)()) {
    auto* item = new QAction(caption, parent);
    item->setObjectName(name);
    item->setMenuRole(QAction::NoRole);
    connect(item, &QAction::triggered, this, OrWarn(this, handler));
    parent->addAction(item);
  };

  QMenu* file = AddMenu(bar, "mnuFile", "File");
  add(file, "mnuOpen", "Open model", &frmMain::mnuDialog_Click<frmOpen>);
  add(file, "mnuSave", "Save model", &frmMain::mnuDialog_Click<frmSave>);
  add(file, "mnuImageCopy", "Copy image", &frmMain::mnuImageCopy_Click);
  add(file, "mnuHistory", "Record history", &frmMain::mnuHistory_Click);
  AddSeparator(file, "separater2");
  add(file, "mnuExit", "Exit", &frmMain::mnuExit_Click);

  QMenu* graphic = AddMenu(bar, "mnuGraphicArea", "Graphic");
  add(graphic, "mnuWidth", "Width and Mesh Density", &frmMain::mnuDialog_Click<frmWidth>);
  add(graphic, "mnuMoveOrigin", "Move Origin", &frmMain::mnuMoveOrigin_Click);
  AddSeparator(graphic, "separater3");
  add(graphic, "mnuImageIndicator", "Graphics", &frmMain::mnuDialog_Click<frmImageIndicator>);
  add(graphic, "mnuValueIndicator", "Values", &frmMain::mnuDialog_Click<frmValueIndicator>);
  AddSeparator(graphic, "separater5");
  add(graphic, "mnuClear", "Clear Model", &frmMain::mnuClear_Click);

  add(bar, "mnuShape", "Shape", &frmMain::mnuShape_Click);

  QMenu* parameter = AddMenu(bar, "mnuAnalysis", "Parameter");
  add(parameter, "mnuMaterial", "Design Property", &frmMain::mnuDialog_Click<frmMaterial>);
  add(parameter, "mnuFreedom", "Freedom Conditions", &frmMain::mnuDialog_Click<frmFreedom>);
  add(parameter, "mnuAppliedLoad", "Applied Load", &frmMain::mnuDialog_Click<frmAppliedLoad>);
  add(parameter, "mnuDrivingParameter", "Optimizaion Parameter",
      &frmMain::mnuDialog_Click<frmController>);

  add(bar, "mnuStressAnalysis", "FEA", &frmMain::mnuStressAnalysis_Click);
  add(bar, "mnuOptimization", "Optimization", &frmMain::mnuDialog_Click<frmOptimization>);

  const auto* firstMenu = new QShortcut(Qt::Key_F10, bar);
  connect(firstMenu, &QShortcut::activated, bar,
          [bar, file] { bar->setActiveAction(file->menuAction()); });
  const auto* escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, &frmMain::DropCorner);
}

void frmMain::SetResultMenusEnabled(bool enabled) {
  for (const char* item : {"mnuOptimization", "mnuHistory"}) {
    findChild<QAction*>(item)->setEnabled(enabled);
  }
}

}  // namespace quillane
