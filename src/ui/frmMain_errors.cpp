// The main window's edge: where errors end, and how the program ends.
#include <QGuiApplication>
#include <QTimer>

#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"
#include "ui/rescue_file.h"

namespace quillane {
namespace {

RunTimeError OutOfMemory() {
  return RunTimeError(ErrorKind::kOutOfMemory, "there is not enough memory");
}

/// Runs an action and hands a run-time error in it on.
void Catch(const std::function<void()>& action,
           const std::function<void(const RunTimeError&)>& handle) {
  try {
    action();
  } catch (const RunTimeError& error) {
    handle(error);
  } catch (const std::bad_alloc&) {
    handle(OutOfMemory());
  }
}

}  // namespace

void frmMain::Run(const std::function<void()>& action) {
  if (ended_) return;
  Catch(action, [this](const RunTimeError& error) {
    if (error.Kind() == ErrorKind::kFile) {
      Fatal(error);
    } else {
      Warn(this, StoppedText(error));
    }
  });
}

void frmMain::RunOrEnd(const std::function<void()>& action) {
  if (ended_) return;
  Catch(action, [this](const RunTimeError& error) { Fatal(error); });
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
