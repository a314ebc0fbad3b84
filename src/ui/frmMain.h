// The main window: menus, canvas and legend, status labels, and the timer of automatic steps.
#pragma once

#include <QMainWindow>
#include <QSize>
#include <QString>
#include <functional>
#include <new>
#include <utility>

#include "display/color_scale.h"
#include "fem/solver.h"
#include "model/model.h"
#include "model/run_time_error.h"
#include "optimize/history.h"

class QAction;
class QMenu;
class QTimer;

namespace quillane {

class ElidedLabel;
class PictureWidget;

/// The program's one main window; it owns the model that everything else works on.
class frmMain : public QMainWindow {
  Q_OBJECT

 public:
  frmMain();

  Model& model() { return model_; }
  History& history() { return history_; }
  const SolveReport& LastSolve() const { return lastSolve_; }
  bool HasEnded() const { return ended_; }

  /// The caption of lblUpDate; what does not fit is elided, the whole text is its tooltip.
  void SetUpDateCaption(const QString& text);
  /// "Width = 2000mm  Element Size = 100mm" into lblUpDate.
  void WriteSummary();
  /// DomainHeight from the canvas, ViewRight and ViewTop from the origin's fractions, canvas scale.
  void FitCanvasView();
  /// Marks the active nodes, then draws the model on the canvas.
  void DrawCanvas();
  void DrawStressMap();
  void DrawNeuronMap();
  /// mnuOptimization and mnuHistory, which need results.
  void SetResultMenusEnabled(bool enabled);
  /// The title that names the laboratory with "by ".
  void SetTitleAfterOpening();

  /// One optimization step with map, label and history record. An error in it is fatal and handled
  /// here: the rescue file then holds the layout the step started from.
  void Optimization();

  /// Interval of tmrOpt in milliseconds; 0 stops it.
  void SetTimerInterval(int milliseconds);

  /// Canvas size in logical pixels.
  QSize CanvasSize() const;

  /// The warning box: exclamation icon, OK button, modal to the application.
  static void Warn(QWidget* parent, const QString& text,
                   const QString& title = QStringLiteral("警告"));

  /// Runs an event's handler. A run-time error in it is fatal: it is reported, the model goes to a
  /// rescue file, and the program ends with status 1. Does nothing once the program is ending.
  template <class F>
  void Guarded(F&& action) {
    if (ended_) return;
    try {
      std::forward<F>(action)();
    } catch (const RunTimeError& error) {
      Fatal(error);
    } catch (const std::bad_alloc&) {
      Fatal(OutOfMemory());
    }
  }

  QTimer* tmrOpt = nullptr;  ///< one optimization step a tick

 signals:
  /// The program is to end at once with this exit status.
  void ProgramEnds(int status);

 private:
  Model model_;
  History history_;
  SolveReport lastSolve_;
  bool ended_ = false;

  static RunTimeError OutOfMemory();
  void Fatal(const RunTimeError& error);
};

}  // namespace quillane
