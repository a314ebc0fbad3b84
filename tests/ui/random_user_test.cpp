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
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  template <class Range>
  auto Any(const Range& range) {
    return range[static_cast<decltype(range.size())>(
        Below(static_cast<std::size_t>(range.size())))];
  }

  /// Enters anything into a dialog and leaves it by anything.
  void Fumble(QDialog& dialog) {
    static const std::vector<std::string> texts = {
        "",      "100",     "50",        "400",       "2000", "0.3",  "1",
        "9",     "1e400",   "-5",        "abc",       "0",    "1e-9", "210e3",
        "32768", "12.5 mm", "bad.model", "bad.model", "1e38", ".05"};
    const bool path = dialog.findChild<QWidget*>("Drive1") != nullptr;
    for (auto* box : dialog.findChildren<QLineEdit*>()) {
      if (Below(3) != 0) box->setText(QString::fromStdString(path ? "bad.model" : Any(texts)));
    }
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
      if (Below(4) == 0) button->click();
      if (!dialog.isVisible()) return;
    }
    if (Below(2) == 0) QTest::qWait(3);
    if (dialog.isVisible()) dialog.reject();
  }

  void DamageFile() {
    std::string text = ModelText(RandomPlate(Below(50)));
    for (unsigned fault = Below(4); fault > 0; --fault) {
      const std::size_t at = Below(text.size());
      switch (Below(4)) {
        case 0:
          text.resize(at);
          break;
        case 1:
          text[at] = static_cast<char>(Below(256));
          break;
        case 2:
          text.insert(at, Any(std::vector<std::string>{"9", "-", ",", "1E+99", "\r\n"}));
          break;
        default:
          text.erase(at, 1 + Below(9));
          break;
      }
      if (text.empty()) text.assign(1, ',');
    }
    WriteFile(folder / "bad.model", text);
  }

  /// A press anywhere on the canvas, or in or about the design domain.
  void PressAnywhere() {
    if (Below(8) == 0) model().EditMode = static_cast<Integer>(Between(-4, 16));
    const auto about = [this](Single low, Single high) {
      return low + static_cast<Single>(Between(-0.1, 1.1)) * (high - low);
    };
    const bool onDomain = Below(2) == 0;
    const Single x = onDomain ? about(model().DomainX1, model().DomainX2) : about(-1000, 1000);
    const Single y = onDomain ? about(model().DomainY1, model().DomainY2) : about(-700, 700);
    main->Guarded([&] { main->picCanvas_MouseDown(1, 0, x, y); });
  }

  void AnyCommand() {
    robot.Next([this](QDialog& dialog) { Fumble(dialog); });
    QAction* item = Any(main->findChildren<QAction*>());
    if (item->objectName() != "mnuExit" && item->menu() == nullptr) item->trigger();
  }

  void Act() {
    const unsigned kind = Below(20);
    if (kind == 0) DamageFile();
    if (kind == 1)
      main->resize(static_cast<int>(Between(1, 1500)), static_cast<int>(Between(1, 900)));
    if (kind == 2) Show(RandomPlate(Below(1000)));
    if (kind == 3) Menu("mnuStressAnalysis");
    if (kind >= 4 && kind < 8) AnyCommand();
    if (kind >= 8 && kind < 11 && Find<QAction>("mnuOptimization")->isEnabled()) {
      main->Optimization();
      ++steps;
    }
    if (kind >= 11) PressAnywhere();
    QCoreApplication::processEvents();
  }

  int steps = 0;

 private:
  std::mt19937 random_{20};
};

TEST_F(RandomUser, EndsInNothingButItsOwnReports) {
  const int actions = qEnvironmentVariableIntValue("QUILLANE_TEST_ACTIONS");
  for (int action = 0; action < (actions > 0 ? actions : 400); ++action) {
    Act();
    ASSERT_EQ(QApplication::overrideCursor(), nullptr);
    ASSERT_EQ(QApplication::activeModalWidget(), nullptr);
    if (ended == -1) continue;
    ASSERT_EQ(ended, 1);
    Restart();
  }
  EXPECT_GT(steps, 0);
}

}  // namespace
}  // namespace quillane::test
