// Handling of run-time errors, and the end of the program.
#include <QGuiApplication>
#include <QTimer>

#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"
#include "ui/rescue_file.h"

namespace quillane {
namespace {

/// Runs an action and passes a run-time error to `report`.
void Try(const std::function<void()>& action,
         const std::function<void(const RunTimeError&)>& report) {
  try {
    action();
  } catch (const RunTimeError& error) {
    report(error);
  } catch (const std::bad_alloc&) {
    report(RunTimeError(ErrorKind::kOutOfMemory, "there is not enough memory"));
  }
}

}  // namespace

void frmMain::RunOrWarn(const std::function<void()>& action) {
  if (ended_) return;
  Try(action, [this](const RunTimeError& error) {
    if (error.Kind() == ErrorKind::kFile) return Fatal(error);
    Warn(this, StoppedText(error));
  });
}

void frmMain::RunOrEnd(const std::function<void()>& action) {
  if (ended_) return;
  Try(action, [this](const RunTimeError& error) { Fatal(error); });
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
