// Single and automatic optimization steps.
#include "ui/frmOptimization.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/frmMain.h"

namespace quillane {

frmOptimization::frmOptimization(frmMain& main) : Form(main, "frmOptimization", "Optimization") {
  lblConvergence->setObjectName(QStringLiteral("lblConvergence"));
  QSizePolicy keepsItsPlace = lblConvergence->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  lblConvergence->setSizePolicy(keepsItsPlace);

  QVBoxLayout* rows = Rows();
  for (QPushButton* button : {cmdAutoStart, cmdAutoStop, cmdManual, cmdCancel}) {
    button->setAutoDefault(true);  // Enter presses the button that has the focus
    rows->addWidget(button);
  }
  rows->addWidget(lblConvergence);
  connect(cmdAutoStart, &QPushButton::clicked, this, &frmOptimization::cmdAutoStart_Click);
  connect(cmdAutoStop, &QPushButton::clicked, this, &frmOptimization::cmdAutoStop_Click);
  connect(cmdManual, &QPushButton::clicked, this, &frmOptimization::cmdManual_Click);
  connect(cmdCancel, &QPushButton::clicked, this, &frmOptimization::cmdCancel_Click);
  connect(&main, &frmMain::StepDone, this, &frmOptimization::ShowConvergence);
  Form_Load();
}

void frmOptimization::Form_Load() {
  cmdAutoStart->setFocus();
  PlaceBesideTheMap();
  lblConvergence->hide();
  if (Main().model().StepCount > 0) ShowConvergence(Main().LastSolve());
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

void frmOptimization::ShowConvergence(const SolveReport& report) {
  lblConvergence->setVisible(!report.converged);
}

void frmOptimization::cmdAutoStart_Click() {
  Main().model().AutoOptimize = kTrue;
  if (!busy_) busy_.emplace();
  Main().SetTimerInterval(1);
}

void frmOptimization::cmdAutoStop_Click() { StopSteps(); }

void frmOptimization::cmdManual_Click() {
  Main().model().AutoOptimize = kTrue;
  Main().Optimization();
  busy_.reset();
}

void frmOptimization::cmdCancel_Click() {
  StopSteps();
  Unload();
}

void frmOptimization::StopSteps() {
  Main().model().AutoOptimize = 0;
  Main().SetTimerInterval(0);
  busy_.reset();
}

}  // namespace quillane
