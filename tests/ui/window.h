// A shown main window with a hand on its mouse and menus, and a robot that answers its dialogs.
#pragma once

#include <gtest/gtest.h>

#include <QDialog>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/model_file.h"
#include "support/plates.h"
#include "ui/frmMain.h"

namespace quillane::test {

using Texts = std::vector<std::string>;

/// Chooses an option button or types a text into a box; presses a button of a dialog.
void Enter(QWidget& dialog, const char* control, const std::string& text = {});
void Click(QWidget& dialog, const char* button);

/// Answers every modal dialog while its event loop runs: message boxes are noted and accepted,
/// other dialogs get the next answer given in advance, or are closed.
class Robot : public QObject {
 public:
  Robot();
  using Answer = std::function<void(QDialog&)>;
  void Next(Answer answer) { answers_.push_back(std::move(answer)); }
  /// Drops the answers that no dialog came for.
  void Forget() { answers_.clear(); }

  /// "title: text" of the message boxes since the last call.
  Texts Boxes() { return std::exchange(boxes_, {}); }
  /// What stood below the text of the last message box.
  std::string Details() const { return details_; }

 private:
  void Look();

  std::deque<Answer> answers_;
  Texts boxes_;
  std::string details_;
  QWidget* answered_ = nullptr;
};

/// A short cantilever that loses some material at each step.
Model Slimming();

/// The tests' working directory is a scratch folder of their own.
class Window : public testing::Test {
 protected:
  Window();
  ~Window() override { std::filesystem::current_path(home); }

  /// Puts a new window in the place of the present one.
  void Restart();
  Model& model() { return main->model(); }
  QWidget* Canvas();
  void Menu(const char* name);
  bool IsEnabled(const char* menu);
  /// Opens a dialog by its menu item and works it; false if it was still open then.
  bool In(const char* menu, const Robot::Answer& work);
  /// Likewise: enters an option or texts into boxes and presses a button.
  using Entries = std::vector<std::pair<const char*, std::string>>;
  bool Fill(const char* menu, const Entries& entries, const char* button = "cmdOK");
  bool ChooseIn(const char* menu, const char* option) { return Fill(menu, {{option, ""}}); }
  /// A press exactly at user coordinates, mm, as the canvas reports it.
  void PressAt(Single x, Single y, Integer button = 1, Integer shift = 0);
  /// A click of the mouse at user coordinates, mm, to the nearest pixel.
  void Press(double x, double y, Qt::MouseButton button = Qt::LeftButton);
  std::string Label(const char* name);
  std::string Title() { return main->windowTitle().toStdString(); }
  QImage Picture();
  /// Puts a model into the window as opening a file does.
  void Show(const Model& shown);
  std::string Text() { return ModelFileText(model()); }

  ScratchFolder folder;
  std::filesystem::path home = std::filesystem::current_path();
  Robot robot;
  std::unique_ptr<frmMain> main;
  int ended = -1;  ///< exit status once the program was to end
};

}  // namespace quillane::test
