// The menu tree of the main window.
#pragma once

class QMenuBar;

namespace quillane {

/// Fills the menu bar; every item is a QAction with its own object name, such as "mnuOpen". F10
/// opens the first menu.
void BuildMainMenu(QMenuBar* bar);

}  // namespace quillane
