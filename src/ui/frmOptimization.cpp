#include "ui/frmOptimization.h"

#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "optimize/optimization_step.h"
#include "ui/course_text.h"

namespace quillane {

frmOptimization::frmOptimization(frmMain& main)
    : Form(main, "frmOptimization", "Optimization", "cmdCancel") {
  QVBoxLayout* rows = Rows();
  for (QPushButton* button : {cmdAutoStart, cmdAutoStop, cmdManual, Cancel()}) {
    button->setAutoDefault(true);  // Enter presses the button that has the focus
    rows->addWidget(button);
  }
  setTabOrder(cmdManual, Cancel());
  lblCourse->setObjectName(QStringLiteral("lblCourse"));
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
  const QSize size = sizeHint().grownBy(
      QMargins(inside.left() - window.left(), 0, window.right() - inside.right(), 0));
  move(std::max(screen.left(), std::min(window.right() + 1, screen.right() + 1 - size.width())),
       std::max(screen.top(), window.center().y() - size.height() / 2));
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

/// Cancel.
void frmOptimization::reject() {
  cmdAutoStop_Click();
  Unload();
}

}  // namespace quillane
