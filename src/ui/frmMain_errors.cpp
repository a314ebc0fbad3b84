// Handling of run-time errors, and the end of the program.
#include <QGuiApplication>
#include <QTimer>

#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"

namespace quillane {

void frmMain::Run(const std::function<void()>& action, bool endsOnError) {
  if (ended_) return;
  const auto report = [&](const RunTimeError& error) {
    if (endsOnError || error.Kind() == ErrorKind::kFile) return Fatal(error);
    Warn(this, StoppedText(error));
  };
  try {
    action();
  } catch (const RunTimeError& error) {
    report(error);
  } catch (const std::bad_alloc&) {
    report(RunTimeError(ErrorKind::kOutOfMemory, "there is not enough memory"));
  }
}

void frmMain::Fatal(const RunTimeError& error) {
  ended_ = true;
  tmrOpt->stop();
  while (QGuiApplication::overrideCursor() != nullptr) QGuiApplication::restoreOverrideCursor();
  const RescueReport rescue = WriteRescueFile(model_);
  ShowError(this, FatalText(error, rescue));
  emit ProgramEnds(1);
}

void frmMain::EndFromOutside(int status) {
  if (!ended_) unsaved_.Rescue();
  End(status);
}

void frmMain::End(int status) {
  ended_ = true;
  tmrOpt->stop();
  emit ProgramEnds(status);
}

}  // namespace quillane
