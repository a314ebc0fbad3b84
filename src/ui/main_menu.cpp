#include "ui/main_menu.h"

#include <QMenuBar>
#include <QProxyStyle>
#include <QShortcut>
#include <QStyleOption>
#include <QWidget>

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

void AddItem(QWidget* parent, const char* name, const char* caption) {
  auto* item = new QAction(caption, parent);
  item->setObjectName(name);
  item->setMenuRole(QAction::NoRole);
  parent->addAction(item);
}

void AddSeparator(QMenu* menu, const char* name) { menu->addSeparator()->setObjectName(name); }

QMenu* AddMenu(QMenuBar* bar, const char* name, const char* caption) {
  QMenu* menu = bar->addMenu(caption);
  menu->setObjectName(name);
  menu->menuAction()->setObjectName(name);
  return menu;
}

}  // namespace

void BuildMainMenu(QMenuBar* bar) {
  bar->setNativeMenuBar(false);
  auto* style = new MenuBarStyle;
  style->setParent(bar);
  bar->setStyle(style);

  QMenu* file = AddMenu(bar, "mnuFile", "File");
  AddItem(file, "mnuOpen", "Open model");
  AddItem(file, "mnuSave", "Save model");
  AddItem(file, "mnuImageCopy", "Copy image");
  AddItem(file, "mnuHistory", "Record history");
  AddSeparator(file, "separater2");
  AddItem(file, "mnuExit", "Exit");

  QMenu* graphic = AddMenu(bar, "mnuGraphicArea", "Graphic");
  AddItem(graphic, "mnuWidth", "Width and Mesh Density");
  AddItem(graphic, "mnuMoveOrigin", "Move Origin");
  AddSeparator(graphic, "separater3");
  AddItem(graphic, "mnuImageIndicator", "Graphics");
  AddItem(graphic, "mnuValueIndicator", "Values");
  AddSeparator(graphic, "separater5");
  AddItem(graphic, "mnuClear", "Clear Model");

  AddItem(bar, "mnuShape", "Shape");

  QMenu* parameter = AddMenu(bar, "mnuAnalysis", "Parameter");
  AddItem(parameter, "mnuMaterial", "Design Property");
  AddItem(parameter, "mnuFreedom", "Freedom Conditions");
  AddItem(parameter, "mnuAppliedLoad", "Applied Load");
  AddItem(parameter, "mnuDrivingParameter", "Optimizaion Parameter");

  AddItem(bar, "mnuStressAnalysis", "FEA");
  AddItem(bar, "mnuOptimization", "Optimization");

  const auto* key = new QShortcut(Qt::Key_F10, bar);
  QObject::connect(key, &QShortcut::activated, bar,
                   [bar, file] { bar->setActiveAction(file->menuAction()); });
}

}  // namespace quillane
