#include "ui/message_box.h"

#include <QMessageBox>
#include <QPushButton>

namespace quillane {
namespace {

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
             const QString& details) {
  QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(details);
  box.button(QMessageBox::Ok)->setIcon(QIcon());
  box.exec();
}

}  // namespace

void Warn(QWidget* parent, const QString& text, const QString& title, const QString& details) {
  ShowBox(parent, QMessageBox::Warning, title, text, details);
}

void ShowError(QWidget* parent, const QString& text) {
  ShowBox(parent, QMessageBox::Critical, "エラー", text, {});
}

}  // namespace quillane
