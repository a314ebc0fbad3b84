// A visible main window, its mouse and menus, and a robot that answers its dialogs.
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
#include "ui/canvas_view.h"
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

/// Returns the report of the optimization dialog.
inline std::string CourseOf(QWidget& dialog) {
  return dialog.findChild<QLabel*>("lblCourse")->text().toStdString();
}

/// Returns a short cantilever that loses material at each step.
inline Model Slimming() {
  Model plate = Cantilever(6, 12);
  plate.StressTarget = 4;
  plate.Epsilon = 3;
  plate.Lambda = 0.2F;
  return plate;
}

/// Answers every modal dialog in its event loop: records and accepts message boxes, gives other
/// dialogs the next answer of the queue, or closes them.
class Robot : public QObject {
 public:
  Robot() { QTimer::singleShot(0, this, &Robot::Look); }
  using Answer = std::function<void(QDialog&)>;
  void Next(Answer answer) { answers_.push_back(std::move(answer)); }
  /// Drops unused answers.
  void Forget() { answers_.clear(); }

  /// Returns "title: text" of the message boxes since the last call.
  Texts Boxes() { return std::exchange(boxes_, {}); }
  /// Returns the informative text of the last message box.
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

/// A test with its own scratch folder as working directory.
class Window : public testing::Test {
 protected:
  Window() {
    std::filesystem::current_path(folder.Path());
    Restart();
  }
  ~Window() override { std::filesystem::current_path(home); }

  /// Replaces the window by a new one.
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
  /// Shows a model as opening a file does.
  void Show(const Model& shown) {
    model() = shown;
    main->View().FitAndShowModel();
  }

  void Menu(const char* name) { Find<QAction>(name)->trigger(); }
  bool IsEnabled(const char* menu) { return Find<QAction>(menu)->isEnabled(); }

  /// Opens a dialog by its menu item and operates it. Returns whether it closed.
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

  /// Opens the optimization dialog and returns its report.
  std::string Report() {
    std::string course;
    In("mnuOptimization", [&](QDialog& dialog) { course = CourseOf(dialog); });
    return course;
  }

  /// Opens a dialog, enters options and texts, and presses a button. Returns whether it closed.
  using Entries = std::vector<std::pair<const char*, std::string>>;
  bool Fill(const char* menu, const Entries& entries, const char* button = "cmdOK") {
    return In(menu, [&](QDialog& dialog) {
      for (const auto& [control, text] : entries) Enter(dialog, control, text);
      Click(dialog, button);
    });
  }
  bool ChooseIn(const char* menu, const char* option) { return Fill(menu, {{option, ""}}); }

  /// Presses exactly at user coordinates, mm, as the canvas reports it.
  void PressAt(Single x, Single y) { emit Canvas()->MouseDown(1, 0, x, y); }
  /// Clicks at user coordinates, mm, to the nearest pixel.
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
  int ended = -1;  ///< exit status, once the program ends
};

}  // namespace quillane::test
