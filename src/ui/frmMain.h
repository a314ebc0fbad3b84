// The main window: menus, canvas and legend, status labels, and the timer of automatic steps.
#pragma once

#include <QMainWindow>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "edit/edit_state.h"
#include "model/model.h"
#include "model/run_time_error.h"
#include "optimize/course.h"
#include "optimize/history.h"
#include "ui/unsaved_work.h"

class QAction;
class QTimer;

namespace quillane {

class CanvasView;
class ElidedLabel;

/// The program's one main window; it owns the model that everything else works on.
class frmMain : public QMainWindow, private CourseListener {
  Q_OBJECT

 public:
  frmMain();
  ~frmMain() override;

  Model& model() { return model_; }
  EditState& Edits() { return edits_; }
  /// How the steps since the last analysis go.
  const Course& course() const { return course_; }
  /// The program is ending: nothing more may happen to the model.
  bool HasEnded() const { return ended_; }

  /// The handler as events are to call it, in connections. A run-time error in it is told in a
  /// warning box; one of the history's file ends the program. Does nothing once the program is
  /// ending.
  template <class Object, class... Arguments>
  auto Guarded(Object* object, void (Object::*handler)(Arguments...)) {
    return [this, object, handler](Arguments... arguments) {
      Run([&] { (object->*handler)(arguments...); });
    };
  }

  /// The caption of lblUpDate; what does not fit is elided, the whole text is its tooltip.
  void SetUpDateCaption(const QString& text);
  /// "Width = 2000mm  Element Size = 100mm" into lblUpDate.
  void WriteSummary();

  /// Begins an edit mode and drops a held corner. Where the mode needs a design domain and there is
  /// none, a box above the dialog says so and the mode stays.
  void SetEditMode(QWidget& dialog, Integer mode);

  /// Canvas size in logical pixels.
  QSize CanvasSize() const;
  /// Draws the model in a view fitted anew. A model that cannot be drawn leaves the canvas empty,
  /// which a box tells once; so does ShowMap.
  void FitAndShowModel();
  /// Draws the map of DisplayMode.
  void ShowMap();

  /// Opens a model file and ends what belonged to the old model. Throws ModelFileError; once the
  /// model was touched its text tells the rescue file of the model that stood.
  void OpenModel(const std::filesystem::path& path);
  /// Throws ModelFileError; then the old file stands.
  void SaveModel(const std::filesystem::path& path);

  /// One optimization step with map, label and history record. An error in it is fatal and handled
  /// here: the rescue file then holds the layout the step started from.
  void Optimization();

  /// Writes unsaved changes into a rescue file, where there are any.
  void RescueUnsavedWork() noexcept { unsaved_.Rescue(); }
  /// Rescues unsaved changes and ends the program, also out of its last box.
  void EndFromOutside(int status);

  /// Interval of tmrOpt in milliseconds; 0 stops it.
  void SetTimerInterval(int milliseconds);

 signals:
  /// An optimization step is done.
  void StepDone();
  /// The program is to end at once with this exit status.
  void ProgramEnds(int status);
  /// The client area has another size, or the window was minimized or restored.
  void Resized();
  void Closed();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Handlers of the window's events.
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

  void BuildMenus();
  void ConnectEvents();
  /// mnuOptimization and mnuHistory, which need results.
  void SetResultMenusEnabled(bool enabled);
  void DropCorner();
  void Analysed(const Course& course) override;
  /// Shows the map and the label of a step.
  void Stepped(const Course& course) override;
  void ShowReadOut(const std::optional<std::string>& caption, const QString& refusal);
  void ShowModel();
  void ShowMixture();
  /// Runs a drawing; where it fails the canvas stays empty and a box says why, once for a reason.
  void Draw(const std::function<void()>& drawing);

  void Run(const std::function<void()>& action);
  /// Runs what ends the program where it fails.
  void RunOrEnd(const std::function<void()>& action);
  void Fatal(const RunTimeError& error);
  void End(int status);

  Model model_;
  EditState edits_;
  History history_;
  Course course_{model_, {this, &history_}};
  UnsavedWork unsaved_{model_};
  std::string undrawable_;  ///< why the model could last not be drawn, as the box told it
  bool ended_ = false;

  QTimer* tmrOpt;
  QWidget* client_;
  std::unique_ptr<CanvasView> view_;
  ElidedLabel* lblUpDate;
  ElidedLabel* lblMouseXY;
  QAction* mnuHistory;
  QAction* mnuOptimization;
};

}  // namespace quillane
