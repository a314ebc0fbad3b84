#include "ui/picture_widget.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace quillane {
namespace {

Integer ButtonMask(Qt::MouseButtons buttons) {
  return static_cast<Integer>((buttons & Qt::LeftButton ? 1 : 0) |
                              (buttons & Qt::RightButton ? 2 : 0) |
                              (buttons & Qt::MiddleButton ? 4 : 0));
}

Integer ShiftMask(Qt::KeyboardModifiers keys) {
  return static_cast<Integer>((keys & Qt::ShiftModifier ? 1 : 0) |
                              (keys & Qt::ControlModifier ? 2 : 0) |
                              (keys & Qt::AltModifier ? 4 : 0));
}

}  // namespace

PictureWidget::PictureWidget(const QString& name, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

void PictureWidget::Place(const QRect& place) {
  setGeometry(place);
  area_.Resize(place.width(), place.height(), devicePixelRatioF());
  update();
}

DrawingArea& PictureWidget::Drawing() {
  update();
  return area_;
}

void PictureWidget::paintEvent(QPaintEvent*) {
  QPainter(this).drawImage(QPointF(0, 0), Image());
  if (Image().devicePixelRatio() != devicePixelRatioF()) {
    QMetaObject::invokeMethod(this, &PictureWidget::ResolutionChanged, Qt::QueuedConnection);
  }
}

void PictureWidget::mousePressEvent(QMouseEvent* event) {
  const QPointF user = UserPosition(*event);
  emit MouseDown(ButtonMask(event->button()), ShiftMask(event->modifiers()),
                 static_cast<Single>(user.x()), static_cast<Single>(user.y()));
}

void PictureWidget::mouseMoveEvent(QMouseEvent* event) {
  const QPointF user = UserPosition(*event);
  emit MouseMove(ButtonMask(event->buttons()), ShiftMask(event->modifiers()),
                 static_cast<Single>(user.x()), static_cast<Single>(user.y()));
}

QPointF PictureWidget::UserPosition(const QMouseEvent& event) const {
  const UserScale scale = area_.Scale();
  const QPointF share(event.position().x() / width(), event.position().y() / height());
  return {scale.left + share.x() * (scale.right - scale.left),
          scale.top + share.y() * (scale.bottom - scale.top)};
}

}  // namespace quillane
