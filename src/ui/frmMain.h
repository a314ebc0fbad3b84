// The main window: menus, canvas and legend, status labels, and the timer of automatic steps.
#pragma once

#include <QMainWindow>
#include <QSize>
#include <QString>
#include <functional>
#include <new>
#include <utility>

#include "display/canvas_layout.h"
#include "display/color_scale.h"
#include "fem/solver.h"
#include "model/model.h"
#include "model/run_time_error.h"
#include "optimize/history.h"
#include "ui/domain_editing.h"

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
  /// How the last analysis or step was solved.
  const SolveReport& LastSolve() const { return lastSolve_; }
  /// The program is ending: nothing more may happen to the model.
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

  /// The warning box: exclamation icon, OK button, modal to the application. The details stand
  /// below the text.
  static void Warn(QWidget* parent, const QString& text,
                   const QString& title = QStringLiteral("警告"), const QString& details = {});

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

  // Handlers of the window's events. They throw RunTimeError; the connections guard them.
  void Form_Load();
  void Form_Resize();
  void Form_Unload();
  void mnuOpen_Click();
  void mnuSave_Click();
  void mnuImageCopy_Click();
  void mnuHistory_Click();
  void mnuExit_Click();
  void mnuWidth_Click();
  void mnuMoveOrigin_Click();
  void mnuImageIndicator_Click();
  void mnuValueIndicator_Click();
  void mnuClear_Click();
  void mnuShape_Click();
  void mnuMaterial_Click();
  void mnuFreedom_Click();
  void mnuAppliedLoad_Click();
  void mnuDrivingParameter_Click();
  void mnuStressAnalysis_Click();
  void mnuOptimization_Click();
  void tmrOpt_Timer();
  /// Button and Shift are not looked at; X and Y in mm.
  void picCanvas_MouseDown(Integer Button, Integer Shift, Single X, Single Y);
  void picCanvas_MouseMove(Integer Button, Integer Shift, Single X, Single Y);

  QTimer* tmrOpt = nullptr;  ///< one optimization step a tick

 signals:
  /// A step is done; its report says how it was solved.
  void StepDone(const SolveReport& report);
  /// The program is to end at once with this exit status.
  void ProgramEnds(int status);

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Handler = void (frmMain::*)();
  using PressOperation = PressResult (*)(Model&, Corners&, Single, Single);

  void BuildControls();
  void BuildMenus();
  QMenu* AddMenu(const char* name, const char* caption);
  template <class Parent>
  QAction* AddItem(Parent* parent, const char* name, const char* caption, Handler handler);

  void PlaceControls();
  LabelFont LabelFontSize() const;
  void ApplyCanvasScale();
  /// Draws; the canvas stays empty for a model that cannot be drawn, as a damaged file leaves one.
  void Redraw(const std::function<void()>& draw);
  void Redraw() {
    Redraw([this] { DrawCanvas(); });
  }
  void MoveOrigin(Single X, Single Y);
  void EditCells(PressOperation operation, Single X, Single Y);
  void DesignDomainSet(Single X, Single Y);
  void FreedomSet(Single X, Single Y);
  void LoadSet(Single X, Single Y);
  template <class ReadOut>
  void ShowReadOut(ReadOut readOut, const QString& refusal, Single X, Single Y);
  void ShowStep();

  static RunTimeError OutOfMemory();
  void Fatal(const RunTimeError& error);
  void End(int status);

  Model model_;
  ColorTable colorTable_;
  History history_;
  SolveReport lastSolve_;
  Corners corners_;
  bool ended_ = false;

  QWidget* client_ = nullptr;
  PictureWidget* picCanvas_ = nullptr;
  PictureWidget* picColorBar_ = nullptr;
  ElidedLabel* lblUpDate_ = nullptr;
  ElidedLabel* lblMouseXY_ = nullptr;
  QAction* mnuOptimization_ = nullptr;
  QAction* mnuHistory_ = nullptr;
};

}  // namespace quillane
