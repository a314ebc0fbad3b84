// A one-line label that shortens a caption too long for it and tells the whole in its tooltip.
#pragma once

#include <QLabel>

namespace quillane {

/// text() is always the whole caption.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  ElidedLabel(const QString& name, QWidget* parent);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QString ShownText() const;
};

}  // namespace quillane
