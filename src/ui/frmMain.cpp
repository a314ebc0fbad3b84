// Construction, start-up, layout and end of the main window.
#include "ui/frmMain.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>
#include <QTimer>

#include "model/number_text.h"
#include "ui/canvas_view.h"
#include "ui/elided_label.h"

namespace quillane {
namespace {

const QString kTitle =
    QStringLiteral("Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.");

// Client area in layout units: as it first opens, and the smallest that shows both labels.
constexpr double kStartWidth = 8085;
constexpr double kStartHeight = 5880;
constexpr double kLeastWidth = 7800;
constexpr double kLeastHeight = 3000;

/// What a window manager may put around the window: its title and two edges.
QSize RoomOfFrame(const QWidget& window) {
  const int line = window.fontMetrics().height();
  return {line, 3 * line};
}

LabelFont FontOf(const QWidget* label) {
  const QFontMetricsF metrics(label->font());
  return {metrics.height(), metrics.averageCharWidth()};
}

}  // namespace

frmMain::frmMain()
    : tmrOpt(new QTimer(this)),
      client_(new QWidget),
      view_(std::make_unique<CanvasView>(client_, model_, edits_)),
      lblUpDate(new ElidedLabel(QStringLiteral("lblUpDate"), client_)),
      lblMouseXY(new ElidedLabel(QStringLiteral("lblMouseXY"), client_)) {
  setObjectName(QStringLiteral("frmMain"));
  tmrOpt->setObjectName(QStringLiteral("tmrOpt"));
  tmrOpt->setTimerType(Qt::PreciseTimer);
  setCentralWidget(client_);
  BuildMenus();
  ConnectEvents();
  const double unit = LayoutUnit(1, 1, FontOf(lblUpDate));
  const int menuHeight = menuBar()->sizeHint().height();
  const QSize room = screen()->availableSize() - RoomOfFrame(*this) - QSize(0, menuHeight);
  client_->setMinimumSize((QSizeF(kLeastWidth, kLeastHeight) * unit).toSize().boundedTo(room));
  const QSize client = (QSizeF(kStartWidth, kStartHeight) * unit).toSize().boundedTo(room);
  resize(client.width(), client.height() + menuHeight);
  Guarded(this, &frmMain::Form_Load)();
}

frmMain::~frmMain() = default;

void frmMain::ConnectEvents() {
  client_->installEventFilter(this);
  connect(this, &frmMain::Resized, Guarded(this, &frmMain::Form_Resize));
  connect(this, &frmMain::Closed, Guarded(this, &frmMain::Form_Unload));
  connect(tmrOpt, &QTimer::timeout, this, Guarded(this, &frmMain::tmrOpt_Timer));
  const PictureWidget* canvas = view_->Canvas();
  connect(canvas, &PictureWidget::ResolutionChanged, this, &frmMain::Resized);
  connect(canvas, &PictureWidget::MouseDown, this, Guarded(this, &frmMain::picCanvas_MouseDown));
  connect(canvas, &PictureWidget::MouseMove, this, Guarded(this, &frmMain::picCanvas_MouseMove));
}

void frmMain::Form_Load() {
  setWindowTitle(kTitle);
  model_ = Model{};
  WriteSummary();
  SetTimerInterval(0);
  SetResultMenusEnabled(false);
}

void frmMain::Form_Resize() {
  if (isMinimized()) {
    setWindowTitle(QStringLiteral("POST"));
    return;
  }
  setWindowTitle(kTitle);
  const CanvasLayout layout =
      LayOutClientArea(client_->width(), client_->height(), FontOf(lblUpDate));
  lblUpDate->setGeometry(0, layout.labelTop, layout.upDateWidth, layout.labelHeight);
  lblMouseXY->setGeometry(layout.mouseXYLeft, layout.labelTop, layout.mouseXYWidth,
                          layout.labelHeight);
  Draw([&] {
    view_->Place(layout);
    view_->FitAndShowModel();
  });
}

void frmMain::Form_Unload() { mnuExit_Click(); }

void frmMain::mnuExit_Click() {
  history_.Close(model_);
  End(0);
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) emit Resized();
  return QMainWindow::eventFilter(watched, event);
}

/// Minimizing and restoring count as changes of size.
void frmMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    const bool wasMinimized =
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMinimized);
    if (wasMinimized != isMinimized()) emit Resized();
  }
  QMainWindow::changeEvent(event);
}

void frmMain::closeEvent(QCloseEvent*) { emit Closed(); }

void frmMain::SetUpDateCaption(const QString& text) { lblUpDate->setText(text); }

void frmMain::WriteSummary() {
  SetUpDateCaption(QString::fromStdString("Width = " + GeneralText(model_.DomainWidth) +
                                          "mm  Element Size = " + GeneralText(model_.ElementSize) +
                                          "mm"));
}

}  // namespace quillane
