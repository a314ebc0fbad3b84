// The main window's commands that compute: stress analysis and optimization steps.
#include <QTimer>

#include "model/number_text.h"
#include "optimize/optimization_step.h"
#include "ui/busy_pointer.h"
#include "ui/canvas_view.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"

namespace quillane {
namespace {

QString VolumeCaption(const Model& model) {
  return QString::fromStdString("  Volume = " + ExponentText(model.Volume) + "mm^3");
}

}  // namespace

void frmMain::mnuStressAnalysis_Click() {
  SolveReport report;
  SetEditMode(*this, kModeNothing);
  {
    const BusyPointer busy;
    course_ = OptimizationCourse();
    report = StressAnalysis(model_, [this] { SetResultMenusEnabled(true); });
    course_.Begin(model_, report);
    edits_.changedSinceAnalysis = false;
    Draw([this] { view_->ShowMap(kShowStress); });
    SetUpDateCaption(VolumeCaption(model_));
  }
  if (!report.converged) Warn(this, NotConvergedText(report));
}

void frmMain::Optimization() {
  RunOrEnd([this] {
    const BusyPointer busy;
    const Array2<Integer> layoutBefore = model_.CellState;
    try {
      course_.Add(model_, quillane::Optimization(model_, history_, [this] { ShowStep(); }));
    } catch (...) {
      model_.CellState = layoutBefore;
      throw;
    }
    emit StepDone();
  });
}

void frmMain::ShowStep() {
  ShowMap();
  SetUpDateCaption(VolumeCaption(model_) + QStringLiteral("     ") +
                   QString::fromStdString(GeneralText(int{model_.StepCount})) +
                   QStringLiteral("step"));
}

void frmMain::tmrOpt_Timer() {
  if (model_.AutoOptimize != 0) Optimization();
}

void frmMain::SetTimerInterval(int milliseconds) {
  tmrOpt->setInterval(milliseconds);
  if (milliseconds > 0) {
    tmrOpt->start();
  } else {
    tmrOpt->stop();
  }
}

}  // namespace quillane
