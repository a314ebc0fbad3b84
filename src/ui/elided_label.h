// A one-line label that writes a long caption smaller and, where that is not enough, shortens it.
#pragma once

#include <QLabel>

namespace quillane {

/// text() is always the whole caption; where it is shortened, the tooltip tells it.
class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  ElidedLabel(const QString& name, QWidget* parent);

  /// What is to be read on it now.
  QString ShownText() const;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// The label's font, or a smaller one where the caption needs it.
  QFont ShownFont() const;
};

}  // namespace quillane
