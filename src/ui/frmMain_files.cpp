// The main window's files: the model, the picture, the history.
#include <QClipboard>
#include <QGuiApplication>

#include "edit/press.h"
#include "model/model_file.h"
#include "ui/canvas_view.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"
#include "ui/rescue_file.h"

namespace quillane {
namespace {

const QString kTitleAfterOpening = QStringLiteral(
    "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.");

constexpr const char* kHistoryFile = "History.tmp";

}  // namespace

void frmMain::OpenModel(const std::filesystem::path& path) {
  bool touched = false;
  std::optional<std::string> standing;
  const auto forget = [&] {
    touched = true;
    standing = TextToKeep(model_);
    ClearResults(model_);
    model_.ClickCount = 0;
    SetResultMenusEnabled(false);
  };
  try {
    OpenModelFile(model_, path, forget);
  } catch (const ModelFileError& error) {
    if (touched) {
      ShowMixture();
      WriteSummary();
    }
    if (!standing) throw;
    const RescueReport rescue = WriteRescueFile(*standing);
    unsaved_.NoteKept();  // of the mixture nothing is the user's own
    throw ModelFileError(0, error.what() + ReplacedModelText(rescue));
  }
  model_.DomainDefined = kTrue;
  unsaved_.NoteKept();
  undrawable_.clear();
  FitAndShowModel();
  setWindowTitle(kTitleAfterOpening);
  WriteSummary();
  if (model_.HistoryRecording != 0) history_.Close(model_);
}

void frmMain::SaveModel(const std::filesystem::path& path) {
  SaveModelFile(model_, path);
  unsaved_.NoteKept();
}

/// What is left after a failed opening; that it may not be drawable is told with the failure.
void frmMain::ShowMixture() {
  try {
    view_->FitAndShowModel();
  } catch (const RunTimeError&) {
    view_->ShowNothing();
  }
}

void frmMain::mnuImageCopy_Click() {
  QGuiApplication::clipboard()->clear();
  QGuiApplication::clipboard()->setImage(view_->Canvas()->Image());
}

void frmMain::mnuHistory_Click() {
  if (model_.HistoryRecording != 0) {
    Warn(this, QStringLiteral("すでに履歴を記録しています。"));
    return;
  }
  KeepEarlierHistory(kHistoryFile);
  history_.Start(model_, kHistoryFile);
}

}  // namespace quillane
