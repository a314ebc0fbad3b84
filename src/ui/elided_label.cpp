// The shown text is cut at painting; text() stays whole.
#include "ui/elided_label.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace quillane {

ElidedLabel::ElidedLabel(const QString& name, QWidget* parent) : QLabel(parent) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
  setContentsMargins(fontMetrics().averageCharWidth() / 2, 0, 0, 0);
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  if (ShownText() != text()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().trimmed(), this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   ShownText());
}

QString ElidedLabel::ShownText() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

}  // namespace quillane
