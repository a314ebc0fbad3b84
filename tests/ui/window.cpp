// Implements the hand and the robot.
#include "ui/window.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "model/model_file.h"
#include "ui/picture_widget.h"

namespace quillane::test {
namespace {

template <class T>
T& Control(QWidget& dialog, const char* name) {
  T* control = dialog.findChild<T*>(QLatin1String(name));
  if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
  return *control;
}

}  // namespace

void Choose(QWidget& dialog, const char* option) {
  Control<QAbstractButton>(dialog, option).setChecked(true);
}

void Type(QWidget& dialog, const char* box, const std::string& text) {
  Control<QLineEdit>(dialog, box).setText(QString::fromStdString(text));
}

void Click(QWidget& dialog, const char* button) {
  Control<QAbstractButton>(dialog, button).click();
}

Robot::Robot() { QTimer::singleShot(0, this, &Robot::Look); }

std::vector<std::string> Robot::Boxes() { return std::exchange(boxes_, {}); }

void Robot::Look() {
  QTimer::singleShot(0, this, &Robot::Look);
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (dialog == nullptr || !dialog->isVisible() || dialog == answered_) return;
  if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
    boxes_.push_back((box->windowTitle() + ": " + box->text()).toStdString());
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

Window::~Window() { std::filesystem::current_path(home); }

void Window::Menu(const char* name) { Find<QAction>(name)->trigger(); }

void Window::ChooseIn(const char* menu, const char* option) {
  robot.Next([option](QDialog& dialog) {
    Choose(dialog, option);
    Click(dialog, "cmdOK");
  });
  Menu(menu);
}

void Window::Press(double x, double y, Qt::MouseButton button) {
  auto* canvas = Find<QWidget>("picCanvas");
  const double left = double{model().ViewRight} - double{model().DomainWidth};
  const double column = (x - left) / double{model().DomainWidth} * canvas->width();
  const double row =
      (double{model().ViewTop} - y) / double{model().DomainHeight} * canvas->height();
  QTest::mouseClick(canvas, button, {}, QPoint(qRound(column), qRound(row)));
}

std::string Window::Label(const char* name) { return Find<QLabel>(name)->text().toStdString(); }

void Window::Show(const Model& shown) {
  model() = shown;
  main->FitCanvasView();
  main->DrawCanvas();
}

std::string Window::ModelText(const Model& model) { return ModelFileText(model); }

}  // namespace quillane::test
