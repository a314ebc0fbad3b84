// A shown main window with a hand on its mouse and menus, and a robot that answers its dialogs.
#pragma once

#include <gtest/gtest.h>

#include <QDialog>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "support/plates.h"
#include "ui/frmMain.h"

namespace quillane::test {

/// Sets an option button or a text box, or presses a button of a dialog.
void Choose(QWidget& dialog, const char* option);
void Type(QWidget& dialog, const char* box, const std::string& text);
void Click(QWidget& dialog, const char* button);

/// Answers every modal dialog while its event loop runs: message boxes are noted and accepted,
/// other dialogs get the next answer given in advance, or are closed.
class Robot : public QObject {
 public:
  Robot();
  using Answer = std::function<void(QDialog&)>;
  void Next(Answer answer) { answers_.push_back(std::move(answer)); }

  /// "title: text" of the message boxes since the last call.
  std::vector<std::string> Boxes();

 private:
  void Look();

  std::deque<Answer> answers_;
  std::vector<std::string> boxes_;
  QWidget* answered_ = nullptr;
};

/// The tests' working directory is a scratch folder of their own.
class Window : public testing::Test {
 protected:
  Window();
  ~Window() override;

  /// Puts a new window in the place of the present one.
  void Restart();
  Model& model() { return main->model(); }
  template <class T>
  T* Find(const char* name) {
    return main->findChild<T*>(QLatin1String(name));
  }
  void Menu(const char* name);
  /// Opens a dialog by its menu item, takes the option and presses OK.
  void ChooseIn(const char* menu, const char* option);
  /// A click of the mouse at user coordinates, mm, to the nearest pixel.
  void Press(double x, double y, Qt::MouseButton button = Qt::LeftButton);
  std::string Label(const char* name);
  /// Puts a model into the window as opening a file does.
  void Show(const Model& shown);
  std::string Text() { return ModelText(model()); }
  static std::string ModelText(const Model& model);

  ScratchFolder folder;
  std::filesystem::path home = std::filesystem::current_path();
  Robot robot;
  std::unique_ptr<frmMain> main;
  int ended = -1;  ///< exit status once the program was to end
};

}  // namespace quillane::test
