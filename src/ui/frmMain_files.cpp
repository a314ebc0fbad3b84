// The model file, the picture and the history.
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalBlocker>

#include "model/model_file.h"
#include "ui/canvas_view.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"

namespace quillane {
namespace {

const QString kTitleAfterOpening =
    "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.";

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
    ForgetResults();
  };
  try {
    OpenModelFile(model_, path, forget);
  } catch (const ModelFileError& error) {
    if (touched) {
      const QSignalBlocker untold(view_.get());  // the failure itself is reported
      view_->FitAndShowModel();
      WriteSummary();
    }
    if (!standing) throw;
    const RescueReport rescue = WriteRescueFile(*standing);
    unsaved_.NoteKept();  // the mixture is not the user's work
    throw ModelFileError(0, error.what() + ReplacedModelText(rescue));
  }
  model_.DomainDefined = kTrue;
  unsaved_.NoteKept();
  view_->ForgetFailure();
  view_->FitAndShowModel();
  setWindowTitle(kTitleAfterOpening);
  WriteSummary();
  if (model_.HistoryRecording != 0) history_.Close(model_);
}

void frmMain::SaveModel(const std::filesystem::path& path) {
  SaveModelFile(model_, path);
  unsaved_.NoteKept();
}

void frmMain::mnuImageCopy_Click() {
  QGuiApplication::clipboard()->clear();
  QGuiApplication::clipboard()->setImage(view_->Canvas()->Image());
}

void frmMain::mnuHistory_Click() {
  if (model_.HistoryRecording != 0) return Warn(this, "すでに履歴を記録しています。");
  KeepEarlierHistory(kHistoryFile);
  history_.Start(model_, kHistoryFile);
}

}  // namespace quillane
