// The main window: menus, canvas and legend, status labels, and the timer of automatic steps.
#pragma once

#include <QMainWindow>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "edit/edit_state.h"
#include "edit/press.h"
#include "model/model.h"
#include "model/run_time_error.h"
#include "optimize/course.h"
#include "optimize/history.h"
#include "ui/rescue_file.h"

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
  CanvasView& View() { return *view_; }
  /// Returns the analyses and steps so far, with their figures.
  const Course& course() const { return course_; }
  /// Returns whether the program is ending; then nothing changes the model any more.
  bool HasEnded() const { return ended_; }

  /// Wraps a handler in RunOrWarn, for connections.
  template <class Object, class... Arguments>
  auto OrWarn(Object* object, void (Object::*handler)(Arguments...)) {
    return [this, object, handler](Arguments... arguments) {
      RunOrWarn([&] { (object->*handler)(arguments...); });
    };
  }

  /// Sets the caption of lblUpDate.
  void SetUpDateCaption(const std::string& text);
  /// Returns the width and the size of an element: "Width = 2000mm  Element Size = 100mm".
  std::string Summary() const;
  /// Writes the summary into lblUpDate.
  void WriteSummary();

  /// Begins an edit mode and drops a held corner. If the mode needs a design domain and there is
  /// none, warns above the dialog and keeps the present mode.
  void SetEditMode(QWidget& dialog, Integer mode);

  /// Draws the map of DisplayMode.
  void ShowMap();

  /// Opens a model file; results and history of the old model end. Throws ModelFileError, which
  /// names the rescue file of the old model if that was already overwritten.
  void OpenModel(const std::filesystem::path& path);
  /// Throws ModelFileError; then the old file is unchanged.
  void SaveModel(const std::filesystem::path& path);

  /// Runs one optimization step with map, label and history record. An error in it is fatal and
  /// handled here: the rescue file then holds the layout the step started from.
  void Optimization();

  /// Sets the interval of tmrOpt in milliseconds; 0 stops it.
  void SetTimerInterval(int milliseconds);

  /// Writes a rescue file if there are unsaved changes.
  void RescueUnsavedWork() noexcept { unsaved_.Rescue(); }
  /// Rescues unsaved changes and ends the program, even if it shows its last message box.
  void EndFromOutside(int status);

 signals:
  /// An optimization step was done.
  void StepDone();
  /// The program must end at once with this exit status.
  void ProgramEnds(int status);
  /// The client area has changed its size, or the window was minimized or restored.
  void Resized();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Handlers of the window's events.
  void Form_Load();
  void Form_Resize();
  void Form_Unload();
  void mnuImageCopy_Click();
  void mnuHistory_Click();
  void mnuExit_Click();
  void mnuMoveOrigin_Click();
  void mnuClear_Click();
  void mnuShape_Click();
  void mnuStressAnalysis_Click();
  void tmrOpt_Timer();
  /// Ignores Button and Shift; X and Y in mm.
  void picCanvas_MouseDown(Integer Button, Integer Shift, Single X, Single Y);
  void picCanvas_MouseMove(Integer Button, Integer Shift, Single X, Single Y);

  /// Shows a new dialog.
  template <class Dialog>
  void mnuDialog_Click();
  void BuildMenus();
  void ConnectEvents();
  /// Enables mnuOptimization and mnuHistory, which need results.
  void SetResultMenusEnabled(bool enabled);
  void DropCorner();
  void Analysed(const Course& course) override;
  /// Shows the map and the label of a step.
  void Stepped(const Course& course) override;
  /// Notes that there are no results, and disables the menus that need them.
  void ForgetResults();
  /// If there was no analysis, says in the tooltip of lblUpDate that results are zero.
  void TellMissingResults();
  void ShowReadOut(const std::optional<std::string>& caption, PressResult refusal);

  /// Runs an action, unless the program is ending. A run-time error is shown in a warning box; one
  /// of the history file, or any one if endsOnError, ends the program.
  void Run(const std::function<void()>& action, bool endsOnError);
  void RunOrWarn(const std::function<void()>& action) { Run(action, false); }
  void RunOrEnd(const std::function<void()>& action) { Run(action, true); }
  void Fatal(const RunTimeError& error);
  void End(int status);

  Model model_;
  EditState edits_;
  History history_;
  Course course_{model_, {this, &history_}};
  UnsavedWork unsaved_{model_};
  bool hasResults_ = false;
  bool ended_ = false;

  QTimer* tmrOpt;
  QWidget* client_;
  std::unique_ptr<CanvasView> view_;
  ElidedLabel* lblUpDate;
  ElidedLabel* lblMouseXY;
};

}  // namespace quillane
