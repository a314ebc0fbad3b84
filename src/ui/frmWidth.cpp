// Entry of the view's width and the cells' size.
#include "ui/frmWidth.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "display/grid.h"
#include "display/view.h"
#include "model/number_text.h"
#include "model/numbers.h"
#include "ui/frmMain.h"

namespace quillane {
namespace {

/// The typed length in mm; 0, which is refused, where it is no positive Single.
Single PositiveLength(const QLineEdit* box) {
  try {
    return std::max(ToSingle(LeadingNumber(TextOf(box), "the length"), "the length"), 0.0F);
  } catch (const RunTimeError&) {
    return 0;
  }
}

/// Tries the two lengths on a view of its own, with the given origin fractions.
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

frmWidth::frmWidth(frmMain& main) : Form(main, "frmWidth", "Width and Mesh Density") {
  QVBoxLayout* rows = Rows();
  rows->addLayout(FieldGrid({{"Enter display area Width in mm units.", "", txtWidth, "mm"},
                             {"Enter element-Size in mm units.", "", txtUnitGrid, "mm"}}));
  rows->addLayout(ButtonRow({cmdOK, cmdCancel}));
  connect(cmdOK, &QPushButton::clicked, this, &frmWidth::cmdOK_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmWidth::cmdCancel_Click);
  Form_Load();
}

void frmWidth::Form_Load() {
  Model& model = Main().model();
  model.EditMode = kModeNothing;
  txtWidth->setText(QString::fromStdString(GeneralText(model.DomainWidth)));
  txtUnitGrid->setText(QString::fromStdString(GeneralText(model.ElementSize)));
  FocusText(txtWidth);
}

bool frmWidth::Refused(Single width, Single elementSize) {
  const auto refuse = [this](const QString& text, QLineEdit* box) {
    frmMain::Warn(this, text);
    FocusText(box);
    return true;
  };
  if (width == 0) {
    return refuse(QStringLiteral("表示幅には0より大きい数値を入力してください。"), txtWidth);
  }
  if (elementSize == 0) {
    return refuse(QStringLiteral("要素サイズには0より大きい数値を入力してください。"), txtUnitGrid);
  }
  if (!CanBeShown(Main().model(), Main().CanvasSize(), width, elementSize)) {
    return refuse(QStringLiteral("この表示幅と要素サイズでは格子を描くことができません。\n"
                                 "値を変えてください。"),
                  txtUnitGrid);
  }
  return false;
}

void frmWidth::cmdOK_Click() {
  const Single width = PositiveLength(txtWidth);
  const Single elementSize = PositiveLength(txtUnitGrid);
  if (Refused(width, elementSize)) return;
  Main().Guarded([this, width, elementSize] {
    Model& model = Main().model();
    model.DomainWidth = width;
    model.ElementSize = elementSize;
    Main().WriteSummary();
    Main().FitCanvasView();
    Main().DrawCanvas();
  });
  Unload();
}

}  // namespace quillane
