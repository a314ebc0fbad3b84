// Construction, start-up, layout and end of the main window.
#include "ui/frmMain.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenuBar>
#include <QTimer>

#include "display/canvas_drawing.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "fem/mesh.h"
#include "model/number_text.h"
#include "ui/elided_label.h"
#include "ui/picture_widget.h"

namespace quillane {
namespace {

const QString kTitle =
    QStringLiteral("Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.");
const QString kTitleAfterOpening = QStringLiteral(
    "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.");

// Client area in layout units: as it first opens, and the smallest that shows both labels.
constexpr double kStartWidth = 8085;
constexpr double kStartHeight = 5880;
constexpr double kLeastWidth = 7800;
constexpr double kLeastHeight = 3000;

}  // namespace

frmMain::frmMain() {
  setObjectName(QStringLiteral("frmMain"));
  BuildControls();
  BuildMenus();
  const QSize client =
      (QSizeF(kStartWidth, kStartHeight) * LayoutUnit(1, 1, LabelFontSize())).toSize();
  resize(client.width(), client.height() + menuBar()->sizeHint().height());
  Guarded([this] { Form_Load(); });
}

void frmMain::BuildControls() {
  client_ = new QWidget;
  tmrOpt = new QTimer(this);
  tmrOpt->setObjectName(QStringLiteral("tmrOpt"));
  tmrOpt->setTimerType(Qt::PreciseTimer);
  picColorBar_ = new PictureWidget(QStringLiteral("picColorBar"), client_);
  picCanvas_ = new PictureWidget(QStringLiteral("picCanvas"), client_);
  lblUpDate_ = new ElidedLabel(QStringLiteral("lblUpDate"), client_);
  lblMouseXY_ = new ElidedLabel(QStringLiteral("lblMouseXY"), client_);
  client_->installEventFilter(this);
  setCentralWidget(client_);
  const double unit = LayoutUnit(1, 1, LabelFontSize());
  client_->setMinimumSize((QSizeF(kLeastWidth, kLeastHeight) * unit).toSize());

  connect(tmrOpt, &QTimer::timeout, this, [this] { Guarded([this] { tmrOpt_Timer(); }); });
  connect(picCanvas_, &PictureWidget::MouseDown, this,
          [this](Integer button, Integer shift, Single x, Single y) {
            Guarded([&] { picCanvas_MouseDown(button, shift, x, y); });
          });
  connect(picCanvas_, &PictureWidget::MouseMove, this,
          [this](Integer button, Integer shift, Single x, Single y) {
            Guarded([&] { picCanvas_MouseMove(button, shift, x, y); });
          });
  connect(picCanvas_, &PictureWidget::ResolutionChanged, this,
          [this] { Guarded([this] { Form_Resize(); }); });
}

void frmMain::Form_Load() {
  setWindowTitle(kTitle);
  model_ = Model{};
  WriteSummary();
  SetTimerInterval(0);
  colorTable_ = MakeColorTable();
  SetResultMenusEnabled(false);
}

void frmMain::Form_Resize() {
  if (isMinimized()) {
    setWindowTitle(QStringLiteral("POST"));
    return;
  }
  setWindowTitle(kTitle);
  PlaceControls();
  Redraw([this] {
    FitCanvasView();
    DrawCanvas();
  });
  DrawColorBar(picColorBar_->Drawing(), colorTable_, kStressTitle);
}

void frmMain::PlaceControls() {
  const CanvasLayout layout =
      LayOutClientArea(client_->width(), client_->height(), LabelFontSize());
  picCanvas_->Place({0, 0, layout.canvasWidth, layout.canvasHeight});
  picColorBar_->Place({layout.canvasWidth, 0, layout.colorBarWidth, layout.canvasHeight});
  lblUpDate_->setGeometry(0, layout.labelTop, layout.upDateWidth, layout.labelHeight);
  lblMouseXY_->setGeometry(layout.mouseXYLeft, layout.labelTop, layout.mouseXYWidth,
                           layout.labelHeight);
}

LabelFont frmMain::LabelFontSize() const {
  const QFontMetricsF metrics(lblUpDate_->font());
  return {metrics.height(), metrics.averageCharWidth()};
}

void frmMain::Form_Unload() { End(0); }

void frmMain::mnuExit_Click() {
  history_.Close(model_);
  End(0);
}

void frmMain::mnuMoveOrigin_Click() { model_.EditMode = kModeOrigin; }

void frmMain::mnuClear_Click() {
  picCanvasClear(picCanvas_->Drawing(), picColorBar_->Drawing(), model_, colorTable_);
  model_.EditMode = kModeNothing;
  SetResultMenusEnabled(false);
  if (model_.HistoryRecording != 0) history_.Close(model_);
}

void frmMain::mnuImageCopy_Click() {
  QGuiApplication::clipboard()->clear();
  QGuiApplication::clipboard()->setImage(picCanvas_->Image());
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) {
    Guarded([this] { Form_Resize(); });
  }
  return QMainWindow::eventFilter(watched, event);
}

/// Minimizing and restoring count as changes of size.
void frmMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    const bool wasMinimized =
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMinimized);
    if (wasMinimized != isMinimized()) Guarded([this] { Form_Resize(); });
  }
  QMainWindow::changeEvent(event);
}

void frmMain::closeEvent(QCloseEvent*) {
  if (!ended_) Form_Unload();
}

void frmMain::SetUpDateCaption(const QString& text) { lblUpDate_->setText(text); }

void frmMain::WriteSummary() {
  SetUpDateCaption(QString::fromStdString("Width = " + GeneralText(model_.DomainWidth) +
                                          "mm  Element Size = " + GeneralText(model_.ElementSize) +
                                          "mm"));
}

void frmMain::SetTitleAfterOpening() { setWindowTitle(kTitleAfterOpening); }

QSize frmMain::CanvasSize() const { return picCanvas_->size(); }

void frmMain::FitCanvasView() {
  FitView(model_, picCanvas_->width(), picCanvas_->height());
  ApplyCanvasScale();
}

void frmMain::ApplyCanvasScale() { picCanvas_->Drawing().SetScale(CanvasScale(model_)); }

void frmMain::DrawCanvas() {
  MarkActiveNodes(model_);
  quillane::DrawCanvas(picCanvas_->Drawing(), model_);
}

void frmMain::Redraw(const std::function<void()>& draw) {
  try {
    draw();
  } catch (const RunTimeError&) {
    picCanvas_->Drawing().Clear();
  }
}

void frmMain::DrawStressMap() {
  quillane::DrawStressMap(picCanvas_->Drawing(), picColorBar_->Drawing(), model_, colorTable_);
}

void frmMain::DrawNeuronMap() {
  quillane::DrawNeuronMap(picCanvas_->Drawing(), picColorBar_->Drawing(), model_, colorTable_);
}

}  // namespace quillane
