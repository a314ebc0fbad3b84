// A user who does anything at all: presses, entries, damaged files, analyses and steps at random.
// QUILLANE_TEST_ACTIONS sets how many actions it takes.
#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <random>

#include "ui/window.h"

namespace quillane::test {
namespace {

class RandomUser : public Window {
 protected:
  unsigned Below(std::size_t count) { return static_cast<unsigned>(random_() % count); }
  Single Between(Single low, Single high) {
    return std::uniform_real_distribution<Single>(low, high)(random_);
  }

  /// Enters anything into a dialog and leaves it by anything.
  void Fumble(QDialog& dialog) {
    static const Texts texts = {"",        "100", "50",   "400", "2000",  "0.3",
                                "1",       "9",   "-5",   "abc", "1e400", "210e3",
                                "12.5 mm", "0",   "1e38", ".05", "1e-9",  "32768"};
    const bool path = dialog.findChild<QWidget*>("Drive1") != nullptr;
    for (auto* box : dialog.findChildren<QLineEdit*>()) {
      const std::string& text = texts[Below(texts.size())];
      if (Below(3) != 0) box->setText(path ? "bad.model" : QString::fromStdString(text));
    }
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
      if (Below(4) == 0) button->click();
      if (!dialog.isVisible()) return;
    }
    if (Below(2) == 0) QTest::qWait(3);
    if (dialog.isVisible()) dialog.reject();
  }

  /// A press anywhere on the canvas, or in or about the design domain.
  void PressAnywhere() {
    if (Below(8) == 0) model().EditMode = static_cast<Integer>(Between(-4, 16));
    const auto about = [this](Single low, Single high) {
      return low + Between(-0.1F, 1.1F) * (high - low);
    };
    const bool onDomain = Below(2) == 0;
    const Single x = onDomain ? about(model().DomainX1, model().DomainX2) : about(-1000, 1000);
    const Single y = onDomain ? about(model().DomainY1, model().DomainY2) : about(-700, 700);
    PressAt(x, y);
  }

  void AnyCommand() {
    robot.Next([this](QDialog& dialog) { Fumble(dialog); });
    const QList<QAction*> items = main->findChildren<QAction*>();
    QAction* item = items[static_cast<int>(Below(static_cast<std::size_t>(items.size())))];
    if (item->objectName() != "mnuExit" && item->menu() == nullptr) item->trigger();
    robot.Forget();
  }

  /// Saving works and opening gives the same model back, or saving is refused with a reason.
  void CheckFile() {
    if (!Fill("mnuSave", {{"txtFileName", "kept.model"}}, "cmdSave")) {
      EXPECT_NE(robot.Details(), "");
      EXPECT_FALSE(std::filesystem::exists("kept.model"));
      return;
    }
    const std::string saved = ReadFile(folder / "kept.model");
    std::filesystem::remove("kept.model");
    if (model().CellRowCount == 0) return;  // before the first domain there is nothing to open
    WriteFile(folder / "again.model", saved);
    Model again;
    OpenModelFile(again, folder / "again.model");
    EXPECT_EQ(ModelFileText(again), saved);
  }

  void Act() {
    const unsigned kind = Below(20);
    if (kind == 0) {
      WriteFile(folder / "bad.model", Damaged(ModelFileText(RandomPlate(Below(50))), random_));
      if (!Fill("mnuOpen", {{"txtFileName", "bad.model"}}, "cmdOpen")) ++failedOpenings;
    }
    if (kind == 1)
      main->resize(1 + static_cast<int>(Below(1500)), 1 + static_cast<int>(Below(900)));
    if (kind == 2) {
      WriteFile(folder / "whole.model", ModelFileText(RandomPlate(Below(1000))));
      Fill("mnuOpen", {{"txtFileName", "whole.model"}}, "cmdOpen");
    }
    if (kind == 3) Menu("mnuStressAnalysis");
    if (kind >= 4 && kind < 8) AnyCommand();
    if (kind >= 8 && kind < 11 && IsEnabled("mnuOptimization")) {
      main->Optimization();
      ++steps;
    }
    if (kind >= 11) PressAnywhere();
    if (ended == -1 && Below(10) == 0) CheckFile();
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
