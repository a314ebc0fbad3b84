// How the main window reports what went wrong, and how it ends the program.
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/rescue_file.h"

namespace quillane {
namespace {

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
             const QString& details = {}) {
  QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(details);
  box.button(QMessageBox::Ok)->setIcon(QIcon());
  box.exec();
}

}  // namespace

void frmMain::Warn(QWidget* parent, const QString& text, const QString& title,
                   const QString& details) {
  ShowBox(parent, QMessageBox::Warning, title, text, details);
}

RunTimeError frmMain::OutOfMemory() {
  return RunTimeError(ErrorKind::kOutOfMemory, "there is not enough memory",
                      "Close other programs, or use fewer and larger elements.");
}

void frmMain::Fatal(const RunTimeError& error) {
  ended_ = true;
  tmrOpt->stop();
  while (QGuiApplication::overrideCursor() != nullptr) QGuiApplication::restoreOverrideCursor();
  const RescueReport rescue = WriteRescueFile(model_);
  ShowBox(this, QMessageBox::Critical, QStringLiteral("エラー"), FatalText(error, rescue));
  emit ProgramEnds(1);
}

void frmMain::End(int status) {
  ended_ = true;
  tmrOpt->stop();
  emit ProgramEnds(status);
}

}  // namespace quillane
