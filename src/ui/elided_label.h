// A one-line label that shrinks a long caption and elides it if that is not enough.
#pragma once

#include <QLabel>

#include "display/canvas_layout.h"

namespace quillane {

/// text() is always the whole caption; if it is elided, the tooltip shows it.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  ElidedLabel(const QString& name, QWidget* parent);

  /// Sets the caption, and a note for its tooltip.
  void Tell(const QString& caption, const QString& note = {});

  /// Returns the size of a character of a caption that fits.
  LabelFont FontSize() const;
  /// Returns the visible text.
  QString ShownText() const;
  /// Returns the caption, if it is elided, and the note.
  QString ToolTipText() const;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Returns the label's font, or a smaller one if the caption needs it.
  QFont ShownFont() const;

  QString note_;
};

}  // namespace quillane
