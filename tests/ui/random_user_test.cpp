// Random presses, entries, damaged files, analyses and steps.
// QUILLANE_TEST_ACTIONS sets how many actions it takes.
#include <QMenu>
#include <random>

#include "ui/window.h"

namespace quillane::test {
namespace {

class RandomUser : public Window {
 protected:
  int Below(std::size_t count) { return static_cast<int>(random_() % count); }

  /// Enters random texts into a dialog and leaves it at random.
  void Fumble(QDialog& dialog) {
    static const QStringList texts = {"",    "100",   "50",   "400", "2000", "0.3", "9",   "-5",
                                      "abc", "1e400", "12.5", "0",   "1e38", ".05", "1e-9"};
    const bool path = dialog.findChild<QWidget*>("Drive1") != nullptr;
    for (auto* box : dialog.findChildren<QLineEdit*>()) {
      if (Below(3) != 0) box->setText(path ? "bad.model" : texts[Below(15)]);
    }
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
      if (Below(4) == 0) button->click();
      if (!dialog.isVisible()) return;
    }
    if (Below(2) == 0) QTest::qWait(3);
    if (dialog.isVisible()) dialog.reject();
  }

  void AnyCommand() {
    robot.Next([this](QDialog& dialog) { Fumble(dialog); });
    const QList<QAction*> items = main->findChildren<QAction*>();
    QAction* item = items[Below(static_cast<std::size_t>(items.size()))];
    if (item->objectName() != "mnuExit" && item->menu() == nullptr) item->trigger();
    robot.Forget();
  }

  void Act() {
    const int kind = Below(20);
    if (kind < 2) {
      const std::string text = ModelFileText(RandomPlate(static_cast<unsigned>(Below(1000))));
      WriteFile(folder / "bad.model", kind == 0 ? Damaged(text, random_) : text);
      if (!Fill("mnuOpen", {{"txtFileName", "bad.model"}}, "cmdOpen")) ++failedOpenings;
    }
    if (kind == 2) main->resize(1 + Below(1500), 1 + Below(900));
    if (kind == 3) Menu("mnuStressAnalysis");
    if (kind >= 4 && kind < 8) AnyCommand();
    if (kind >= 8 && kind < 11 && IsEnabled("mnuOptimization")) {
      main->Optimization();
      ++steps;
    }
    if (kind >= 11) {
      if (Below(8) == 0) model().EditMode = static_cast<Integer>(Below(20) - 4);
      PressAt(static_cast<Single>(Below(2000)) - 1000, static_cast<Single>(Below(1400)) - 700);
    }
    QCoreApplication::processEvents();
  }

  int steps = 0, failedOpenings = 0;

 private:
  std::mt19937 random_{20};
};

TEST_F(RandomUser, NeverLosesTheModelAndEndsInNothingButItsOwnReports) {
  const int actions = qEnvironmentVariableIntValue("QUILLANE_TEST_ACTIONS");
  for (int action = 0; action < (actions > 0 ? actions : 400); ++action) {
    Act();
    ASSERT_EQ(QApplication::overrideCursor(), nullptr);
    ASSERT_EQ(QApplication::activeModalWidget(), nullptr);
    ASSERT_FALSE(HasFailure()) << "action " << action;
    if (ended == -1) continue;
    ASSERT_EQ(ended, 1);
    Restart();
  }
  EXPECT_GT(steps, 0);
  EXPECT_GT(failedOpenings, 0);
}

}  // namespace
}  // namespace quillane::test
