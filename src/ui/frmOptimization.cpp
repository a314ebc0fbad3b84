#include "ui/frmOptimization.h"

#include <QLabel>
#include <QScreen>
#include <QStringList>
#include <QVBoxLayout>
#include <algorithm>

#include "fem/element_stiffness.h"
#include "optimize/optimization_step.h"
#include "ui/canvas_view.h"
#include "ui/error_text.h"

namespace quillane {
namespace {

constexpr int kCourseLines = 7;
const QString kLongestCourseLine = "Open the last saved model, lower the target. ";

/// Names the state `steps` steps ago: the FEA, or the step before it.
QString Since(const Model& model, int steps) {
  const int step = model.StepCount - 1 - steps;
  return step < 0 ? "the FEA" : QString("step %1").arg(step);
}

QString LayoutLine(const Course& course) {
  const Model& model = course.State();
  if (model.StepCount == 0) return "No step since the FEA.";
  const std::optional<Repetition> repetition = course.Repeats();
  if (!repetition) {
    return QString("Cells changed in the last step: %1").arg(course.Figures().cellsChanged);
  }
  return repetition->cycle == 1
             ? QString("The layout has not changed since %1.").arg(Since(model, repetition->steps))
             : QString("The layout repeats every %1 steps.").arg(repetition->cycle);
}

/// Returns the report of the steps: volume, stresses, whether the layout is at rest and the solver
/// converged, and what to do. At most kCourseLines lines, none longer than kLongestCourseLine.
QString CourseText(const EditState& edits, const Course& course) {
  const Model& model = course.State();
  const CourseFigures& figures = course.Figures();
  QStringList lines;
  if (figures.startVolume > 0) {
    lines += QString("Volume: %1% of that at the last FEA")
                 .arg(100 * model.Volume / figures.startVolume, 0, 'f', 1);
  }
  lines += QString("Stress: mean %1, largest %2 MPa")
               .arg(model.AvgStress, 0, 'g', 4)
               .arg(model.MaxStress, 0, 'g', 4);
  lines += LayoutLine(course);
  if (const int solves = figures.unconvergedInARow; solves > 0) {
    lines += QString("The solver has not converged since %1:").arg(Since(model, solves - 1));
    // Steps can disconnect loads; an analysis that does not converge shows a fault of the model.
    lines += solves <= model.StepCount             ? "open the last saved model, lower the target."
             : !LoadsAreCarried(model)             ? "check the supports (Freedom Conditions)."
             : !IsPoissonRatio(model.PoissonRatio) ? "check Poisson's ratio (Design Property)."
                                                   : "use more cells across the plate's members.";
  }
  if (edits.changedSinceAnalysis) lines += "Changed by hand since the last FEA.";
  if (StepCounterIsFull(model)) {
    lines += "The step counter is full: FEA starts it anew.";
  }
  return lines.join(u'\n');
}

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
