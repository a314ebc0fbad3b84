// The main window's canvas: what presses and moves of the mouse do, by edit mode.
#include <QApplication>

#include "display/canvas_drawing.h"
#include "display/read_outs.h"
#include "fem/mesh.h"
#include "model/number_text.h"
#include "ui/domain_editing.h"
#include "ui/elided_label.h"
#include "ui/frmMain.h"
#include "ui/picture_widget.h"
#include "ui/support_load_editing.h"

namespace quillane {
namespace {

const QString kElementOutside = QStringLiteral("選ばれた要素は設計領域にありません。");
const QString kNodeOutside = QStringLiteral("選ばれた節点は設計領域にありません。");
const QString kBadGrid = QStringLiteral(
    "設計領域には縦横に1つ以上の要素が必要です。\n"
    "節点と要素の数はそれぞれ32767以下にしてください。");

}  // namespace

void frmMain::picCanvas_MouseDown(Integer, Integer, Single X, Single Y) {
  if (model_.EditMode == kModeOrigin) MoveOrigin(X, Y);
  if (model_.EditMode == kModeDomain) DesignDomainSet(X, Y);
  if (model_.EditMode == kModeDesign) EditCells(&AddDesignElements, X, Y);
  if (model_.EditMode == kModeNonDesign) EditCells(&AddNonDesignElements, X, Y);
  if (model_.EditMode == kModeCutOut) EditCells(&DeleteDesignDomain, X, Y);
  if (model_.EditMode == kModeRemove) EditCells(&RemoveElements, X, Y);
  if (model_.EditMode == kModeLoad) LoadSet(X, Y);
  if (model_.EditMode == kModeDisplacement) ShowReadOut(&dispValue, kNodeOutside, X, Y);
  if (model_.EditMode == kModeStress) ShowReadOut(&stressValue, kElementOutside, X, Y);
  if (model_.EditMode == kModePotential) ShowReadOut(&neuronValue, kElementOutside, X, Y);
  if (model_.EditMode == kModeLoadValue) ShowReadOut(&loadValue, kNodeOutside, X, Y);
  if (model_.EditMode >= kModeFixX) FreedomSet(X, Y);
}

void frmMain::picCanvas_MouseMove(Integer, Integer, Single X, Single Y) {
  lblMouseXY_->setText(QString::fromStdString("x = " + WholeText(static_cast<double>(X)) +
                                              "mm  y = " + WholeText(static_cast<double>(Y)) +
                                              "mm"));
}

/// The pressed point becomes the origin; the fractions stay, so the next resize undoes the move.
void frmMain::MoveOrigin(Single X, Single Y) {
  model_.ViewRight -= X;
  model_.ViewTop -= Y;
  ApplyCanvasScale();
  Redraw();
}

void frmMain::DesignDomainSet(Single X, Single Y) {
  switch (quillane::DesignDomainSet(model_, corners_, X, Y)) {
    case PressResult::kFirstCorner:
      MarkDomainCorner(picCanvas_->Drawing(), model_, static_cast<double>(model_.DomainX1),
                       static_cast<double>(model_.DomainY1));
      break;
    case PressResult::kEdited:
      Redraw();
      break;
    case PressResult::kBadGrid:
      Redraw();
      Warn(this, kBadGrid);
      break;
    default:
      break;
  }
}

void frmMain::EditCells(PressOperation operation, Single X, Single Y) {
  switch (operation(model_, corners_, X, Y)) {
    case PressResult::kFirstCorner:
      Redraw([this] {
        HighlightCell(picCanvas_->Drawing(), model_,
                      ElementOfCell(model_, corners_.row1, corners_.column1));
      });
      break;
    case PressResult::kEdited:
      Redraw();
      break;
    case PressResult::kOutside:
      Warn(this, kElementOutside);
      break;
    default:
      break;
  }
}

void frmMain::FreedomSet(Single X, Single Y) {
  if (quillane::FreedomSet(model_, X, Y) == PressResult::kOutside) {
    Warn(this, kNodeOutside);
  } else {
    Redraw();
  }
}

void frmMain::LoadSet(Single X, Single Y) {
  if (quillane::LoadSet(model_, X, Y) == PressResult::kOutside) {
    Warn(this, kNodeOutside);
    model_.ClickCount = 0;
    return;
  }
  QApplication::beep();
  Redraw();
}

template <class ReadOut>
void frmMain::ShowReadOut(ReadOut readOut, const QString& refusal, Single X, Single Y) {
  const auto caption = readOut(model_, X, Y);
  if (caption) {
    SetUpDateCaption(QString::fromStdString(*caption));
  } else {
    Warn(this, refusal);
  }
}

}  // namespace quillane
