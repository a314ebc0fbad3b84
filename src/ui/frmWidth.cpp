#include "ui/frmWidth.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "display/grid.h"
#include "display/view.h"
#include "edit/settings.h"
#include "model/number_text.h"
#include "ui/canvas_view.h"

namespace quillane {
namespace {

/// Returns whether a view with these lengths and the origin fractions of the model can be drawn.
bool CanBeShown(const Model& model, QSize canvas, Single width, Single elementSize) {
  Model trial;
  trial.OriginFracX = model.OriginFracX;
  trial.OriginFracY = model.OriginFracY;
  trial.DomainWidth = width;
  try {
    FitView(trial, canvas.width(), canvas.height());
  } catch (const RunTimeError&) {
    return false;
  }
  return GridIsDrawable(elementSize, CanvasScale(trial));
}

}  // namespace

frmWidth::frmWidth(frmMain& main)
    : Form(main, {"frmWidth", "Width and Mesh Density", "cmdCancel"}) {
  QVBoxLayout* rows = Rows();
  rows->addLayout(FieldGrid({{"Enter display area Width in mm units.", "", txtWidth, "mm"},
                             {"Enter element-Size in mm units.", "", txtUnitGrid, "mm"}}));
  rows->addLayout(ButtonRow(cmdOK));
  Form_Load();
}

void frmWidth::Form_Load() {
  const Model& model = Main().model();
  Main().SetEditMode(*this, kModeNothing);
  txtWidth->setText(QString::fromStdString(GeneralText(model.DomainWidth)));
  txtUnitGrid->setText(QString::fromStdString(GeneralText(model.ElementSize)));
  FocusText(txtWidth);
}

void frmWidth::cmdOK_Click() {
  Model& model = Main().model();
  const Single width = PositiveLength(TextOf(txtWidth));
  const Single elementSize = PositiveLength(TextOf(txtUnitGrid));
  if (width == 0) {
    return Refuse(txtWidth, "表示幅には0より大きい数値を入力してください。");
  }
  if (elementSize == 0) {
    return Refuse(txtUnitGrid, "要素サイズには0より大きい数値を入力してください。");
  }
  if (!CanBeShown(model, Main().View().Canvas()->size(), width, elementSize)) {
    return Refuse(txtUnitGrid,
                  "この表示幅と要素サイズでは格子を描くことができません。\n"
                  "値を変えてください。");
  }
  SetGrid(model, Main().Edits(), width, elementSize);
  Main().WriteSummary();
  Main().View().FitAndShowModel();
  Unload();
}

}  // namespace quillane
