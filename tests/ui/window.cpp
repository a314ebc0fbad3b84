// Implements the hand and the robot, and runs the tests of the window without a screen.
#include "ui/window.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "ui/picture_widget.h"

namespace quillane::test {

void Enter(QWidget& dialog, const char* control, const std::string& text) {
  if (auto* box = dialog.findChild<QLineEdit*>(control)) {
    box->setText(QString::fromStdString(text));
  } else {
    dialog.findChild<QAbstractButton*>(control)->setChecked(true);
  }
}

void Click(QWidget& dialog, const char* button) {
  dialog.findChild<QAbstractButton*>(button)->click();
}

Model Slimming() {
  Model plate = Cantilever(6, 12);
  plate.StressTarget = 4;
  plate.Epsilon = 3;
  plate.Lambda = 0.2F;
  return plate;
}

Robot::Robot() { QTimer::singleShot(0, this, &Robot::Look); }

void Robot::Look() {
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

Window::Window() {
  std::filesystem::current_path(folder.Path());
  Restart();
}

void Window::Restart() {
  ended = -1;
  main = std::make_unique<frmMain>();
  QObject::connect(main.get(), &frmMain::ProgramEnds, main.get(), [this](int status) {
    ended = status;
    while (QWidget* open = QApplication::activeModalWidget()) static_cast<QDialog*>(open)->done(0);
  });
  main->resize(900, 700);
  main->show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(main.get()));
}

void Window::Menu(const char* name) { main->findChild<QAction*>(name)->trigger(); }

bool Window::IsEnabled(const char* menu) { return main->findChild<QAction*>(menu)->isEnabled(); }

bool Window::In(const char* menu, const Robot::Answer& work) {
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

bool Window::Fill(const char* menu, const Entries& entries, const char* button) {
  return In(menu, [&](QDialog& dialog) {
    for (const auto& [control, text] : entries) Enter(dialog, control, text);
    Click(dialog, button);
  });
}

void Window::PressAt(Single x, Single y, Integer button, Integer shift) {
  emit main->findChild<PictureWidget*>("picCanvas")->MouseDown(button, shift, x, y);
}

void Window::Press(double x, double y, Qt::MouseButton button) {
  const double left = double{model().ViewRight} - double{model().DomainWidth};
  const double column = (x - left) / double{model().DomainWidth} * Canvas()->width();
  const double row =
      (double{model().ViewTop} - y) / double{model().DomainHeight} * Canvas()->height();
  QTest::mouseClick(Canvas(), button, {}, QPoint(qRound(column), qRound(row)));
}

std::string Window::Label(const char* name) {
  return main->findChild<QLabel*>(name)->text().toStdString();
}

QWidget* Window::Canvas() { return main->findChild<QWidget*>("picCanvas"); }

QImage Window::Picture() { return main->findChild<PictureWidget*>("picCanvas")->Image().copy(); }

void Window::Show(const Model& shown) {
  model() = shown;
  main->FitAndShowModel();
}

}  // namespace quillane::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
