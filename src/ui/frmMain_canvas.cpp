// The main window's canvas: what presses and moves of the mouse do there, and what it shows.
#include <QApplication>

#include "display/read_outs.h"
#include "edit/press.h"
#include "model/number_text.h"
#include "ui/canvas_view.h"
#include "ui/elided_label.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"

namespace quillane {
namespace {

const QString kElementOutside = QStringLiteral("選ばれた要素は設計領域にありません。");
const QString kNodeOutside = QStringLiteral("選ばれた節点は設計領域にありません。");
const QString kImpossibleDomain = QStringLiteral(
    "設計領域には縦横に1つ以上の要素が必要です。\n"
    "節点と要素の数はそれぞれ32767以下にしてください。");

}  // namespace

void frmMain::picCanvas_MouseDown(Integer, Integer, Single X, Single Y) {
  switch (Press(model_, edits_, X, Y)) {
    case PressResult::kNothing:
      break;
    case PressResult::kFirstCorner:
      Draw([this] { view_->MarkCorner(); });
      break;
    case PressResult::kNewDomain:
      SetResultMenusEnabled(false);
      ShowModel();
      break;
    case PressResult::kLoaded:
      QApplication::beep();
      ShowModel();
      break;
    case PressResult::kEdited:
      ShowModel();
      break;
    case PressResult::kOriginMoved:
      ShowModel();
      picCanvas_MouseMove(0, 0, 0, 0);  // the mouse is at the new origin
      break;
    case PressResult::kReadLoad:
      ShowReadOut(loadValue(model_, X, Y), kNodeOutside);
      break;
    case PressResult::kReadDisplacement:
      ShowReadOut(dispValue(model_, X, Y), kNodeOutside);
      break;
    case PressResult::kReadStress:
      ShowReadOut(stressValue(model_, X, Y), kElementOutside);
      break;
    case PressResult::kReadPotential:
      RunOrEnd([&] { ShowReadOut(neuronValue(model_, X, Y), kElementOutside); });
      break;
    case PressResult::kElementOutside:
      Warn(this, kElementOutside);
      break;
    case PressResult::kNodeOutside:
      Warn(this, kNodeOutside);
      break;
    case PressResult::kImpossibleDomain:
      ShowModel();
      Warn(this, kImpossibleDomain);
      break;
  }
}

void frmMain::picCanvas_MouseMove(Integer, Integer, Single X, Single Y) {
  lblMouseXY->setText(QString::fromStdString("x = " + WholeText(static_cast<double>(X)) +
                                             "mm  y = " + WholeText(static_cast<double>(Y)) +
                                             "mm"));
}

void frmMain::ShowReadOut(const std::optional<std::string>& caption, const QString& refusal) {
  if (caption) {
    SetUpDateCaption(QString::fromStdString(*caption));
  } else {
    Warn(this, refusal);
  }
}

void frmMain::mnuMoveOrigin_Click() { SetEditMode(*this, kModeOrigin); }

void frmMain::mnuClear_Click() {
  Draw([this] { view_->Clear(); });
  model_.EditMode = kModeNothing;
  SetResultMenusEnabled(false);
  if (model_.HistoryRecording != 0) history_.Close(model_);
}

void frmMain::SetEditMode(QWidget& dialog, Integer mode) {
  if (!BeginMode(model_, mode)) {
    Warn(&dialog, QStringLiteral("\r\n設計領域をはじめに入力してください。"));
  }
  DropCorner();
}

/// The mark goes with the corner.
void frmMain::DropCorner() {
  if (view_->ShowsCorner() && !HoldsCorner(model_, edits_)) ShowModel();
}

QSize frmMain::CanvasSize() const { return view_->Canvas()->size(); }

void frmMain::FitAndShowModel() {
  Draw([this] { view_->FitAndShowModel(); });
}

void frmMain::ShowModel() {
  Draw([this] { view_->ShowModel(); });
}

void frmMain::ShowMap() {
  Draw([this] { view_->ShowMap(model_.DisplayMode); });
}

void frmMain::Draw(const std::function<void()>& drawing) {
  std::string reason;
  try {
    drawing();
  } catch (const RunTimeError& error) {
    reason = error.what();
    view_->ShowNothing();
  }
  const bool isNews = !reason.empty() && reason != undrawable_;
  undrawable_ = reason;
  if (!isNews) return;
  // Not within the event, which may be one of the window's layout.
  QMetaObject::invokeMethod(
      this, [this, reason] { Warn(this, UndrawableText(reason)); }, Qt::QueuedConnection);
}

}  // namespace quillane
