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

void ElidedLabel::Tell(const QString& caption, const QString& note) {
  setText(caption);
  note_ = note;
}

QString ElidedLabel::ToolTipText() const {
  const QString whole = ShownText() == text() ? QString() : text().trimmed();
  return whole.isEmpty() || note_.isEmpty() ? whole + note_ : whole + u'\n' + note_;
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  // An empty text hides the tooltip.
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), ToolTipText(), this);
  return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(ShownFont());
  painter.setPen(palette().color(foregroundRole()));
  painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   ShownText());
}

LabelFont ElidedLabel::FontSize() const {
  const QFontMetricsF metrics(font());
  return {metrics.height(), metrics.averageCharWidth()};
}

QString ElidedLabel::ShownText() const {
  return QFontMetrics(ShownFont()).elidedText(text(), Qt::ElideRight, contentsRect().width());
}

QFont ElidedLabel::ShownFont() const {
  constexpr double kSmallestShare = 0.6;  // of the font's size; below that text is shortened
  QFont shown = font();
  const int wholeSize = QFontInfo(shown).pixelSize();
  const auto fits = [&] {
    return QFontMetrics(shown).horizontalAdvance(text()) <= contentsRect().width();
  };
  for (int size = wholeSize; !fits() && size > wholeSize * kSmallestShare;) {
    shown.setPixelSize(--size);
  }
  return shown;
}

}  // namespace quillane
