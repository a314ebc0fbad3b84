// A widget that shows a persistent picture and reports the mouse in the picture's user coordinates.
#pragma once

#include <QWidget>

#include "image/image_area.h"
#include "model/types.h"

namespace quillane {

/// The picture keeps what was drawn on it: showing it again after other windows, menus or a repaint
/// copies pixels and draws nothing anew.
class PictureWidget : public QWidget {
  Q_OBJECT

 public:
  PictureWidget(const QString& name, QWidget* parent);

  /// Moves and sizes the widget (logical pixels) and starts a blank picture at the screen's
  /// resolution.
  void Place(const QRect& place);

  /// Returns the picture to draw on; the next repaint shows what was drawn.
  DrawingArea& Drawing();
  /// Returns the present picture.
  const QImage& Image() const { return area_.Image(); }

 signals:
  /// A press of any button at (x, y) in user coordinates; button and shift are the masks of buttons
  /// (1 left, 2 right, 4 middle) and keys (1 Shift, 2 Ctrl, 4 Alt).
  void MouseDown(Integer button, Integer shift, Single x, Single y);
  void MouseMove(Integer button, Integer shift, Single x, Single y);
  /// The screen's resolution changed, so the picture must be drawn again to be sharp.
  void ResolutionChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;  // also of a double click's second press
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  QPointF UserPosition(const QMouseEvent& event) const;

  ImageArea area_;
};

}  // namespace quillane
