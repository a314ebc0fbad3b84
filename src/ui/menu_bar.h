// A menu bar whose parts have object names, for keyboards and tests.
#pragma once

#include <QMenuBar>

namespace quillane {

/// Highlights the item with the keyboard focus, which some styles do only while its menu is open,
/// and opens its first menu by F10.
class MenuBar : public QMenuBar {
 public:
  explicit MenuBar(QWidget* parent);

  QMenu* AddMenu(const char* name, const char* caption);
};

/// Adds an item to a menu, or to the bar itself.
QAction* AddItem(QWidget* parent, const char* name, const char* caption);

void AddSeparator(QMenu* menu, const char* name);

}  // namespace quillane
