#include "ui/menu_bar.h"

#include <QProxyStyle>
#include <QShortcut>
#include <QStyleOption>

namespace quillane {
namespace {

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

}  // namespace

MenuBar::MenuBar(QWidget* parent) : QMenuBar(parent) {
  setNativeMenuBar(false);
  auto* style = new MenuBarStyle;
  style->setParent(this);
  setStyle(style);
  const auto* first = new QShortcut(Qt::Key_F10, this);
  connect(first, &QShortcut::activated, this, [this] { setActiveAction(actions().first()); });
}

QMenu* MenuBar::AddMenu(const char* name, const char* caption) {
  QMenu* menu = addMenu(caption);
  menu->setObjectName(name);
  menu->menuAction()->setObjectName(name);
  return menu;
}

QAction* AddItem(QWidget* parent, const char* name, const char* caption) {
  auto* item = new QAction(caption, parent);
  item->setObjectName(name);
  item->setMenuRole(QAction::NoRole);
  parent->addAction(item);
  return item;
}

void AddSeparator(QMenu* menu, const char* name) { menu->addSeparator()->setObjectName(name); }

}  // namespace quillane
