// A shown main window with a hand on its mouse and menus, and a robot that answers its dialogs.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "model/model_file.h"
#include "support/plates.h"
#include "ui/frmMain.h"
#include "ui/picture_widget.h"

namespace quillane::test {

using Texts = std::vector<std::string>;

inline void Click(QWidget& dialog, const char* button) {
  dialog.findChild<QAbstractButton*>(button)->click();
}

/// Chooses an option button or types a text into a box.
inline void Enter(QWidget& dialog, const char* control, const std::string& text) {
  if (auto* box = dialog.findChild<QLineEdit*>(control)) {
    box->setText(QString::fromStdString(text));
  } else {
    dialog.findChild<QAbstractButton*>(control)->setChecked(true);
  }
}

/// What the dialog of the steps tells about them.
inline std::string CourseOf(QWidget& dialog) {
  return dialog.findChild<QLabel*>("lblCourse")->text().toStdString();
}

/// A short cantilever that loses some material at each step.
inline Model Slimming() {
  Model plate = Cantilever(6, 12);
  plate.StressTarget = 4;
  plate.Epsilon = 3;
  plate.Lambda = 0.2F;
  return plate;
}

/// Answers every modal dialog while its event loop runs: message boxes are noted and accepted,
/// other dialogs get the next answer given in advance, or are closed.
class Robot : public QObject {
 public:
  Robot() { QTimer::singleShot(0, this, &Robot::Look); }
  using Answer = std::function<void(QDialog&)>;
  void Next(Answer answer) { answers_.push_back(std::move(answer)); }
  /// Drops the answers that no dialog came for.
  void Forget() { answers_.clear(); }

  /// "title: text" of the message boxes since the last call.
  Texts Boxes() { return std::exchange(boxes_, {}); }
  /// What stood below the text of the last message box.
  std::string Details() const { return details_; }

 private:
  void Look() {
    QTimer::singleShot(0, this, &Robot::Look);
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible() || dialog == answered_) return;
    if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
      boxes_.push_back((box->windowTitle() + ": " + box->text()).toStdString());
      details_ = box->informativeText().toStdString();
      dialog->accept();
    } else if (answers_.empty()) {
      dialog->reject();
    } else {
      const Answer answer = std::move(answers_.front());
      answers_.pop_front();
      answered_ = dialog;
      answer(*dialog);
      answered_ = nullptr;
    }
  }

  std::deque<Answer> answers_;
  Texts boxes_;
  std::string details_;
  QWidget* answered_ = nullptr;
};

/// The tests' working directory is a scratch folder of their own.
class Window : public testing::Test {
 protected:
  Window() {
    std::filesystem::current_path(folder.Path());
    Restart();
  }
  ~Window() override { std::filesystem::current_path(home); }

  /// Puts a new window in the place of the present one.
  void Restart() {
    ended = -1;
    main = std::make_unique<frmMain>();
    QObject::connect(main.get(), &frmMain::ProgramEnds, main.get(), [this](int status) {
      ended = status;
      while (auto* open = QApplication::activeModalWidget()) static_cast<QDialog*>(open)->done(0);
    });
    main->resize(900, 700);
    main->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(main.get()));
  }

  template <class Widget>
  Widget* Find(const char* name) {
    return main->findChild<Widget*>(name);
  }
  PictureWidget* Canvas() { return Find<PictureWidget>("picCanvas"); }
  QImage Picture() { return Canvas()->Image().copy(); }
  std::string Label(const char* name) { return Find<QLabel>(name)->text().toStdString(); }
  std::string Title() { return main->windowTitle().toStdString(); }
  Model& model() { return main->model(); }
  std::string Text() { return ModelFileText(model()); }
  /// Puts a model into the window as opening a file does.
  void Show(const Model& shown) {
    model() = shown;
    main->FitAndShowModel();
  }

  void Menu(const char* name) { Find<QAction>(name)->trigger(); }
  bool IsEnabled(const char* menu) { return Find<QAction>(menu)->isEnabled(); }

  /// Opens a dialog by its menu item and works it; false if it was still open then.
  bool In(const char* menu, const Robot::Answer& work) {
    bool closed = false;
    robot.Next([&](QDialog& dialog) {
      EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
      work(dialog);
      closed = !dialog.isVisible();
      if (!closed) dialog.reject();
    });
    Menu(menu);
    robot.Forget();
    return closed;
  }

  /// Likewise: enters an option or texts into boxes and presses a button.
  using Entries = std::vector<std::pair<const char*, std::string>>;
  bool Fill(const char* menu, const Entries& entries, const char* button = "cmdOK") {
    return In(menu, [&](QDialog& dialog) {
      for (const auto& [control, text] : entries) Enter(dialog, control, text);
      Click(dialog, button);
    });
  }
  bool ChooseIn(const char* menu, const char* option) { return Fill(menu, {{option, ""}}); }

  /// A press exactly at user coordinates, mm, as the canvas reports it.
  void PressAt(Single x, Single y) { emit Canvas()->MouseDown(1, 0, x, y); }
  /// A click of the mouse at user coordinates, mm, to the nearest pixel.
  void Press(double x, double y, Qt::MouseButton button = Qt::LeftButton) {
    const Model& m = model();
    const double left = double{m.ViewRight} - double{m.DomainWidth};
    const double column = (x - left) / double{m.DomainWidth} * Canvas()->width();
    const double row = (double{m.ViewTop} - y) / double{m.DomainHeight} * Canvas()->height();
    QTest::mouseClick(Canvas(), button, {}, QPoint(qRound(column), qRound(row)));
  }

  ScratchFolder folder;
  std::filesystem::path home = std::filesystem::current_path();
  Robot robot;
  std::unique_ptr<frmMain> main;
  int ended = -1;  ///< exit status once the program was to end
};

}  // namespace quillane::test
