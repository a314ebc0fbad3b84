#include "ui/frmOptimization.h"

#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "optimize/optimization_step.h"
#include "ui/canvas_view.h"
#include "ui/course_text.h"

namespace quillane {
namespace {

/// Returns the first place of the columns and rows that is on the screen and clear of all areas.
std::optional<QPoint> FreePlace(QSize size, const QRect& screen, const QList<int>& columns,
                                const QList<int>& rows, const QList<QRect>& areas) {
  for (const int x : columns) {
    for (const int y : rows) {
      const QRect place(QPoint(x, y), size);
      const bool isFree = std::ranges::none_of(
          areas, [&place](const QRect& area) { return place.intersects(area); });
      if (isFree && screen.contains(place)) return place.topLeft();
    }
  }
  return std::nullopt;
}

}  // namespace

frmOptimization::frmOptimization(frmMain& main)
    : Form(main, {"frmOptimization", "Optimization", "cmdCancel"}) {
  QVBoxLayout* rows = Rows();
  for (QPushButton* button : {cmdAutoStart, cmdAutoStop, cmdManual, Cancel()}) {
    button->setAutoDefault(true);  // Enter presses the button that has the focus
    rows->addWidget(button);
  }
  setTabOrder(cmdManual, Cancel());
  lblCourse->setObjectName("lblCourse");
  lblCourse->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lblCourse->setMinimumSize(lblCourse->fontMetrics().horizontalAdvance(kLongestCourseLine),
                            lblCourse->fontMetrics().lineSpacing() * kCourseLines);
  rows->addWidget(lblCourse);
  connect(&main, &frmMain::StepDone, this, &frmOptimization::FollowStep);
  Form_Load();
}

void frmOptimization::Form_Load() {
  cmdAutoStart->setFocus();
  FollowStep();
  PlaceBesideTheMap();
}

void frmOptimization::PlaceBesideTheMap() {
  const QRect window = Main().frameGeometry();
  const QRect inside = Main().geometry();
  const QRect screen = Main().screen()->availableGeometry();
  const QSize size = sizeHint() + window.size() - inside.size();  // including the frame
  const auto onScreen = [](const QWidget* widget, const QRect& area) {
    return area.translated(widget->mapToGlobal(QPoint(0, 0)));
  };
  CanvasView& view = Main().View();
  const QRect canvas = onScreen(view.Canvas(), view.Canvas()->rect());
  const QRect plate = onScreen(view.Canvas(), view.PlateArea().toAlignedRect());
  const QRect legend = onScreen(view.Legend(), view.Legend()->rect());
  const QRect labels(QPoint(inside.left(), canvas.bottom() + 1), inside.bottomRight());
  const QList<int> columns = {window.right() + 1, window.left() - size.width(),
                              canvas.left(),      legend.left() - size.width(),
                              plate.right() + 1,  plate.left() - size.width()};
  const QList<int> rows = {window.center().y() - size.height() / 2,
                           canvas.top(),
                           canvas.bottom() + 1 - size.height(),
                           plate.bottom() + 1,
                           plate.top() - size.height(),
                           window.bottom() + 1,
                           window.top() - size.height()};
  for (const QList<QRect>& hidden : {QList{plate, legend, labels}, QList{plate, legend}}) {
    if (const auto place = FreePlace(size, screen, columns, rows, hidden)) return move(*place);
  }
  move(std::max(screen.left(), std::min(window.right() + 1, screen.right() + 1 - size.width())),
       std::max(screen.top(), rows[0]));
}

void frmOptimization::FollowStep() {
  lblCourse->setText(CourseText(Main().Edits(), Main().course()));
  if (StepCounterIsFull(Main().model())) cmdAutoStop_Click();
}

void frmOptimization::cmdAutoStart_Click() {
  if (StepCounterIsFull(Main().model())) return;
  Main().model().AutoOptimize = kTrue;
  if (!busy_) busy_.emplace();
  Main().SetTimerInterval(1);
}

void frmOptimization::cmdAutoStop_Click() {
  Main().model().AutoOptimize = 0;
  Main().SetTimerInterval(0);
  busy_.reset();
}

void frmOptimization::cmdManual_Click() {
  Main().model().AutoOptimize = kTrue;
  Main().Optimization();
  busy_.reset();
}

void frmOptimization::reject() {
  cmdAutoStop_Click();
  Unload();
}

}  // namespace quillane
