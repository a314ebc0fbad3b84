// The main window's commands that compute: stress analysis, optimization steps and their history.
#include <QTimer>

#include "model/number_text.h"
#include "optimize/optimization_step.h"
#include "ui/busy_pointer.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"

namespace quillane {
namespace {

QString VolumeCaption(const Model& model) {
  return QString::fromStdString("  Volume = " + ExponentText(model.Volume) + "mm^3");
}

}  // namespace

void frmMain::mnuStressAnalysis_Click() {
  const auto analyse = [this]() -> QString {
    const BusyPointer busy;
    try {
      lastSolve_ = StressAnalysis(model_, [this] { SetResultMenusEnabled(true); });
      DrawStressMap();
      SetUpDateCaption(VolumeCaption(model_));
      return lastSolve_.converged ? QString() : NotConvergedText(lastSolve_);
    } catch (const RunTimeError& error) {
      return AnalysisStoppedText(error);
    } catch (const std::bad_alloc&) {
      return AnalysisStoppedText(OutOfMemory());
    }
  };
  const QString warning = analyse();
  if (!warning.isEmpty()) Warn(this, warning);
}

void frmMain::Optimization() {
  Guarded([this] {
    const BusyPointer busy;
    const Array2<Integer> layoutBefore = model_.CellState;
    try {
      lastSolve_ = quillane::Optimization(model_, history_, [this] { ShowStep(); });
      emit StepDone(lastSolve_);
    } catch (...) {
      model_.CellState = layoutBefore;
      throw;
    }
  });
}

void frmMain::ShowStep() {
  if (model_.DisplayMode == kShowStress) DrawStressMap();
  if (model_.DisplayMode == kShowPotential) DrawNeuronMap();
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

void frmMain::mnuHistory_Click() {
  if (model_.HistoryRecording != 0) {
    Warn(this, QStringLiteral("すでに履歴を記録しています。"));
    return;
  }
  history_.Start(model_, "History.tmp");
}

}  // namespace quillane
