// Mouse events on the canvas, and what it shows.
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

void frmMain::picCanvas_MouseDown(Integer, Integer, Single X, Single Y) {
  using enum PressResult;
  switch (const PressResult result = Press(model_, edits_, X, Y)) {
    case kNothing:
      break;
    case kFirstCorner:
      view_->MarkCorner();
      break;
    case kNewDomain:
    case kLoaded:
    case kEdited:
      if (result == kNewDomain) ForgetResults();
      if (result == kLoaded) QApplication::beep();
      view_->ShowModel();
      break;
    case kOriginMoved:
      view_->ShowModel();
      picCanvas_MouseMove(0, 0, 0, 0);  // the mouse is on the new origin
      break;
    case kReadLoad:
      ShowReadOut(loadValue(model_, X, Y), kNodeOutside);
      break;
    case kReadDisplacement:
      ShowReadOut(dispValue(model_, X, Y), kNodeOutside);
      break;
    case kReadStress:
      ShowReadOut(stressValue(model_, X, Y), kElementOutside);
      break;
    case kReadPotential:
      RunOrEnd([&] { ShowReadOut(neuronValue(model_, X, Y), kElementOutside); });
      break;
    case kElementOutside:
    case kNodeOutside:
    case kImpossibleDomain:
      view_->UnmarkCorner();
      Warn(this, RefusalText(result));
      break;
  }
}

void frmMain::picCanvas_MouseMove(Integer, Integer, Single X, Single Y) {
  lblMouseXY->Tell(QString::fromStdString("x = " + WholeText(double{X}) +
                                          "mm  y = " + WholeText(double{Y}) + "mm"));
}

void frmMain::ShowReadOut(const std::optional<std::string>& caption, PressResult refusal) {
  if (!caption) return Warn(this, RefusalText(refusal));
  SetUpDateCaption(*caption);
  if (model_.EditMode != kModeLoadValue) TellMissingResults();
}

void frmMain::ForgetResults() {
  SetResultMenusEnabled(false);
  hasResults_ = false;
}

void frmMain::TellMissingResults() {
  if (!hasResults_) lblUpDate->Tell(lblUpDate->text(), MissingResultsText());
}

void frmMain::ShowMap() {
  view_->ShowMap(model_.DisplayMode);
  TellMissingResults();
}

void frmMain::mnuMoveOrigin_Click() { SetEditMode(*this, kModeOrigin); }

void frmMain::mnuClear_Click() {
  model_.EditMode = kModeNothing;
  view_->Clear();
  SetResultMenusEnabled(false);
  if (model_.HistoryRecording != 0) history_.Close(model_);
}

void frmMain::SetEditMode(QWidget& dialog, Integer mode) {
  if (!BeginMode(model_, mode)) {
    Warn(&dialog, "\r\n設計領域をはじめに入力してください。");
  }
  view_->UnmarkCorner();
}

void frmMain::DropCorner() {
  model_.ClickCount = 0;
  view_->UnmarkCorner();
}

}  // namespace quillane
