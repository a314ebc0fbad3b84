// Ends from outside: signals, full disks, a lost display. Unsaved changes are rescued.
#include "ui/outside_end.h"

#include <sys/resource.h>

#include <QSessionManager>
#include <csignal>

#include "ui/window.h"

namespace quillane::test {
namespace {

class OutsideEnds : public Window {
 protected:
  /// A new window with a saved plate.
  void Begin() {
    outside.reset();
    std::filesystem::remove("Rescue.model");
    Restart();
    outside = std::make_unique<OutsideEnd>(*main);
    Show(Slimming());
    EXPECT_TRUE(Fill("mnuSave", {{"txtFileName", "plate.model"}}, "cmdSave"));
  }
  ~OutsideEnds() override { outside.reset(); }

  int EndBy(int number) {
    raise(number);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ended != -1; }));
    return ended;
  }
  static bool HasRescue() { return std::filesystem::exists("Rescue.model"); }

  std::unique_ptr<OutsideEnd> outside;
};

TEST_F(OutsideEnds, SignalsRescueWhatNoFileHolds) {
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
    signal(number, SIG_DFL);  // it may be inherited as ignored
    Begin();
    EXPECT_EQ(EndBy(number), 128 + number);
    EXPECT_FALSE(HasRescue()) << "everything is saved";
    Begin();
    ChooseIn("mnuFreedom", "optFixX");
    PressAt(600, 300);
    EXPECT_EQ(EndBy(number), 128 + number);
    EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
    EXPECT_NE(Text(), ReadFile(folder / "plate.model"));
  }
  Begin();
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  In("mnuOptimization", [this](QDialog& dialog) {
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text() != ReadFile(folder / "plate.model"); }));
    EndBy(SIGTERM);
  });
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text()) << "in the middle of a course";
  EXPECT_TRUE(robot.Boxes().empty());
}

TEST_F(OutsideEnds, ASessionsEndRescuesOnce) {
  auto* session = qApp->findChild<QSessionManager*>();
  for (const auto request :
       {&QGuiApplication::commitDataRequest, &QGuiApplication::saveStateRequest}) {
    Begin();
    (qApp->*request)(*session);
    EXPECT_FALSE(HasRescue()) << "everything is saved";
    model().Epsilon = 9;
    (qApp->*request)(*session);
    EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
    EndBy(SIGTERM);
    EXPECT_FALSE(std::filesystem::exists("Rescue2.model"));
  }
}

TEST_F(OutsideEnds, ALostDisplayRescuesTooButTheUserIsNotAsked) {
  Begin();
  model().Epsilon = 9;
  EXPECT_EXIT(std::exit(1), testing::ExitedWithCode(1), "") << "as the toolkit ends the program";
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
  std::filesystem::remove("Rescue.model");
  EXPECT_DEATH(qFatal("no display"), "no display");
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
  Begin();
  model().Epsilon = 9;
  Menu("mnuExit");
  EXPECT_EQ(ended, 0);
  outside.reset();
  EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), "");
  EXPECT_FALSE(HasRescue());
}

TEST_F(OutsideEnds, AFileThatMayNotGrowFailsAsOnAFullDisk) {
  Begin();
  const std::string saved = ReadFile(folder / "plate.model");
  model().Epsilon = 9;
  rlimit room = {};
  getrlimit(RLIMIT_FSIZE, &room);
  const rlimit none = {.rlim_cur = 100, .rlim_max = room.rlim_max};
  setrlimit(RLIMIT_FSIZE, &none);
  EXPECT_FALSE(Fill("mnuSave", {{"txtFileName", "plate.model"}}, "cmdSave"));
  setrlimit(RLIMIT_FSIZE, &room);
  EXPECT_NE(robot.Details().find("File too large"), std::string::npos) << robot.Details();
  EXPECT_EQ(ReadFile(folder / "plate.model"), saved);
  EndBy(SIGTERM);
  EXPECT_TRUE(HasRescue());
}

}  // namespace
}  // namespace quillane::test
