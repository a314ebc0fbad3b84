// The space on the screen for a window.
#pragma once

#include <QScreen>
#include <QWidget>

namespace quillane {

/// Returns the largest size of the window's contents on its screen, less a frame of a title bar and
/// two edges.
inline QSize RoomOnScreen(const QWidget& window) {
  const int line = window.fontMetrics().height();
  return window.screen()->availableSize() - QSize(line, 3 * line);
}

}  // namespace quillane
