// Construction, layout, run-time errors and end of the main window.
#include "ui/frmMain.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QTimer>

#include "model/number_text.h"
#include "ui/canvas_view.h"
#include "ui/elided_label.h"
#include "ui/error_text.h"
#include "ui/message_box.h"
#include "ui/screen_room.h"

namespace quillane {
namespace {

const QString kTitle =
    "Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.";

// Client area in layout units: at start, and the smallest one with room for both labels.
constexpr double kStartWidth = 8085;
constexpr double kStartHeight = 5880;
constexpr double kLeastWidth = 7800;
constexpr double kLeastHeight = 3000;

}  // namespace

frmMain::frmMain()
    : tmrOpt(new QTimer(this)),
      client_(new QWidget),
      view_(std::make_unique<CanvasView>(client_, model_, edits_)),
      lblUpDate(new ElidedLabel("lblUpDate", client_)),
      lblMouseXY(new ElidedLabel("lblMouseXY", client_)) {
  setObjectName("frmMain");
  tmrOpt->setObjectName("tmrOpt");
  tmrOpt->setTimerType(Qt::PreciseTimer);
  setCentralWidget(client_);
  BuildMenus();
  ConnectEvents();
  const double unit = LayoutUnit(1, 1, lblUpDate->FontSize());
  const int menuHeight = menuBar()->sizeHint().height();
  const QSize room = RoomOnScreen(*this) - QSize(0, menuHeight);
  client_->setMinimumSize((QSizeF(kLeastWidth, kLeastHeight) * unit).toSize().boundedTo(room));
  const QSize client = (QSizeF(kStartWidth, kStartHeight) * unit).toSize().boundedTo(room);
  resize(client.width(), client.height() + menuHeight);
  OrWarn(this, &frmMain::Form_Load)();
}

frmMain::~frmMain() = default;

void frmMain::ConnectEvents() {
  client_->installEventFilter(this);
  connect(this, &frmMain::Resized, OrWarn(this, &frmMain::Form_Resize));
  connect(tmrOpt, &QTimer::timeout, this, OrWarn(this, &frmMain::tmrOpt_Timer));
  // Queued, because the drawing may be part of a layout event.
  connect(
      view_.get(), &CanvasView::Undrawable, this,
      [this](const QString& reason) { Warn(this, UndrawableText(reason)); }, Qt::QueuedConnection);
  const PictureWidget* canvas = view_->Canvas();
  connect(canvas, &PictureWidget::ResolutionChanged, this, &frmMain::Resized);
  connect(canvas, &PictureWidget::MouseDown, this, OrWarn(this, &frmMain::picCanvas_MouseDown));
  connect(canvas, &PictureWidget::MouseMove, this, OrWarn(this, &frmMain::picCanvas_MouseMove));
}

void frmMain::Form_Load() {
  setWindowTitle(kTitle);
  model_ = Model{};
  WriteSummary();
  SetTimerInterval(0);
  ForgetResults();
}

void frmMain::Form_Resize() {
  setWindowTitle(isMinimized() ? "POST" : kTitle);
  if (isMinimized()) return;
  const CanvasLayout layout =
      LayOutClientArea(client_->width(), client_->height(), lblUpDate->FontSize());
  lblUpDate->setGeometry(0, layout.labelTop, layout.upDateWidth, layout.labelHeight);
  lblMouseXY->setGeometry(layout.mouseXYLeft, layout.labelTop, layout.mouseXYWidth,
                          layout.labelHeight);
  view_->PlaceAndShowModel(layout);
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

/// Treats minimizing and restoring as changes of size.
void frmMain::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    const bool wasMinimized =
        static_cast<QWindowStateChangeEvent*>(event)->oldState().testFlag(Qt::WindowMinimized);
    if (wasMinimized != isMinimized()) emit Resized();
  }
  QMainWindow::changeEvent(event);
}

void frmMain::closeEvent(QCloseEvent*) { OrWarn(this, &frmMain::Form_Unload)(); }

void frmMain::SetUpDateCaption(const std::string& text) {
  lblUpDate->Tell(QString::fromStdString(text));
}

std::string frmMain::Summary() const {
  return "Width = " + GeneralText(model_.DomainWidth) +
         "mm  Element Size = " + GeneralText(model_.ElementSize) + "mm";
}

void frmMain::WriteSummary() { SetUpDateCaption(Summary()); }

void frmMain::Run(const std::function<void()>& action, bool endsOnError) {
  if (ended_) return;
  const auto report = [&](const RunTimeError& error) {
    if (endsOnError || error.Kind() == ErrorKind::kFile) return Fatal(error);
    Warn(this, StoppedText(error));
  };
  try {
    action();
  } catch (const RunTimeError& error) {
    report(error);
  } catch (const std::bad_alloc&) {
    report(RunTimeError(ErrorKind::kOutOfMemory, "there is not enough memory"));
  }
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
