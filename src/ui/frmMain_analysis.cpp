// Stress analysis and optimization steps.
#include <QTimer>

#include "model/number_text.h"
#include "ui/busy_pointer.h"
#include "ui/canvas_view.h"
#include "ui/error_text.h"
#include "ui/frmMain.h"
#include "ui/message_box.h"

namespace quillane {
namespace {

std::string VolumeCaption(const Model& model) {
  return "  Volume = " + ExponentText(model.Volume) + "mm^3";
}

}  // namespace

void frmMain::mnuStressAnalysis_Click() {
  SetEditMode(*this, kModeNothing);
  SetResultMenusEnabled(false);
  view_->ShowModel();  // remains if the analysis fails
  {
    const BusyPointer busy;
    course_.Analyse();
  }
  const SolveReport& report = course_.Figures().lastSolve;
  if (!report.converged) Warn(this, NotConvergedText(report, model_));
}

void frmMain::Analysed(const Course&) {
  SetResultMenusEnabled(true);
  hasResults_ = true;
  edits_.changedSinceAnalysis = false;
  view_->ShowMap(kShowStress);
  SetUpDateCaption(VolumeCaption(model_));
}

void frmMain::Optimization() {
  RunOrEnd([this] {
    const BusyPointer busy;
    course_.Step();
    emit StepDone();
  });
}

void frmMain::Stepped(const Course&) {
  view_->ShowMap(model_.DisplayMode);
  SetUpDateCaption(VolumeCaption(model_) + "     " + std::to_string(model_.StepCount) + "step");
}

void frmMain::tmrOpt_Timer() {
  if (model_.AutoOptimize != 0) Optimization();
}

void frmMain::SetTimerInterval(int milliseconds) {
  tmrOpt->setInterval(milliseconds);
  milliseconds > 0 ? tmrOpt->start() : tmrOpt->stop();
}

}  // namespace quillane
