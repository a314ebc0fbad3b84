// The window itself, and analysis and optimization through it: texts, pictures, files, failures.
#include "ui/window.h"

#include <QClipboard>

#include "optimize/optimization_step.h"

namespace quillane::test {
namespace {

constexpr const char* kTitle =
    "Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.";

TEST_F(Window, StartsWithItsTextsAndViewAndTellsByItsTitleThatItIsMinimized) {
  EXPECT_EQ(Title(), kTitle);
  EXPECT_EQ(Label("lblUpDate"), "Width = 2000mm  Element Size = 100mm");
  EXPECT_EQ(model().ViewRight, 1000);
  EXPECT_FLOAT_EQ(model().ViewTop, model().DomainHeight / 2);
  EXPECT_FALSE(IsEnabled("mnuOptimization") || IsEnabled("mnuHistory"));
  Show(Plate(2, 2));
  main->setWindowTitle("another");
  const QImage before = Picture();
  main->showMinimized();
  EXPECT_EQ(Title(), "POST");
  Menu("mnuClear");
  main->showNormal();
  QCoreApplication::processEvents();
  EXPECT_EQ(Title(), kTitle);
  EXPECT_EQ(Picture(), before);
}

TEST_F(Window, ClearingWipesThePictureAndEndsTheHistory) {
  Show(Cantilever(2, 3));
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  Menu("mnuHistory");
  EXPECT_EQ(robot.Boxes(), Texts{"警告: すでに履歴を記録しています。"});
  const std::string text = Text();
  Menu("mnuMoveOrigin");
  Menu("mnuClear");
  EXPECT_EQ(model().EditMode, kModeNothing);
  EXPECT_EQ(model().HistoryRecording, 0);
  EXPECT_FALSE(IsEnabled("mnuHistory"));
  EXPECT_EQ(Text(), text);
  const QImage cleared = Picture();
  Show(Model{});
  EXPECT_EQ(Picture(), cleared);
}

TEST_F(Window, ThePictureIsCopiedAndSurvivesRepaintsUntilTheProgramEndsAtOnce) {
  Show(Cantilever(2, 3));
  const QImage drawn = Picture();
  Menu("mnuStressAnalysis");
  main->View().FitAndShowModel();
  Menu("mnuHistory");
  model() = Model{};
  main->repaint();
  Menu("mnuImageCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->image(), drawn);
  Menu("mnuExit");
  EXPECT_EQ(ended, 0);
  EXPECT_TRUE(ReadFile(folder / "History.tmp").starts_with("Iteration, Max, Avg, Min\r\n0,"));
  Restart();
  main->close();
  EXPECT_EQ(ended, 0);
}

class Analysis : public Window {
 protected:
  Analysis() {
    Show(Slimming());
    Menu("mnuStressAnalysis");
  }
};

TEST_F(Analysis, TheFirstAnalysisOpensTheWayToOptimization) {
  EXPECT_EQ(Label("lblUpDate"), "  Volume = 7.20E+05mm^3");
  EXPECT_TRUE(IsEnabled("mnuOptimization") && IsEnabled("mnuHistory"));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(robot.Boxes().empty());
  model().EditMode = kModeLoad;
  model().StepCount = 9;
  const QImage map = Picture();
  Menu("mnuStressAnalysis");
  EXPECT_EQ(model().EditMode, kModeNothing);
  EXPECT_EQ(model().StepCount, 0);
  EXPECT_EQ(Picture(), map);
}

TEST_F(Window, AnAnalysisThatDoesNotConvergeIsReportedAndItsResultsStand) {
  Model afloat = Cantilever(3, 3);
  for (Integer& flag : afloat.NodeFreedom.Raw()) flag = 0;
  Show(afloat);
  Menu("mnuStressAnalysis");
  EXPECT_EQ(robot.Boxes().size(), 1U) << "an unheld plate does not converge";
  EXPECT_TRUE(IsEnabled("mnuOptimization"));
  In("mnuOptimization", [](QDialog& dialog) {
    const QSize size = dialog.size();
    Click(dialog, "cmdManual");
    EXPECT_NE(CourseOf(dialog).find("not converged since the FEA:\ncheck the supports"),
              std::string::npos);
    EXPECT_EQ(dialog.size(), size);
  });
  Show(Cantilever(1, 100));
  Menu("mnuStressAnalysis");
  EXPECT_NE(robot.Boxes().at(0).find("too slender"), std::string::npos);
  EXPECT_NE(Report().find("more cells"), std::string::npos);
  model().PoissonRatio = 0.9;
  Menu("mnuStressAnalysis");
  EXPECT_NE(robot.Boxes().at(0).find("Poisson's ratio"), std::string::npos);
  EXPECT_NE(Report().find("check Poisson's ratio"), std::string::npos);
  EXPECT_EQ(ended, -1);
}

TEST_F(Analysis, TheRecordedStepsAreThoseWithoutAWindow) {
  Model headless = model();
  Menu("mnuHistory");
  In("mnuOptimization", [this](QDialog& dialog) {
    for (int step = 0; step < 3; ++step) Click(dialog, "cmdManual");
    EXPECT_TRUE(Label("lblUpDate").ends_with("mm^3     2step")) << Label("lblUpDate");
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return model().StepCount >= 6; }));
    Click(dialog, "cmdAutoStop");
    const int stopped = model().StepCount;
    QTest::qWait(20);
    EXPECT_EQ(model().StepCount, stopped);
    Click(dialog, "cmdAutoStart");
    Click(dialog, "cmdCancel");
  });
  EXPECT_FALSE(Find<QTimer>("tmrOpt")->isActive());
  EXPECT_EQ(model().AutoOptimize, 0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  const int steps = model().StepCount;
  EXPECT_LT(model().Volume, 7.2e5);
  Menu("mnuClear");

  History history;
  history.Start(headless, folder / "headless.tmp");
  Course course(headless, {&history});
  for (int step = 0; step < steps; ++step) course.Step();
  history.Close(headless);
  EXPECT_EQ(ReadFile(folder / "History.tmp"), ReadFile(folder / "headless.tmp"));
  EXPECT_EQ(Text(), ModelFileText(headless));
}

TEST_F(Analysis, TheMapOfAStepIsTheOneChosen) {
  ChooseIn("mnuImageIndicator", "optNeuronValue");
  EXPECT_EQ(model().DisplayMode, kShowPotential);
  main->Optimization();
  const QImage potentials = Picture();
  main->ShowMap();
  EXPECT_EQ(Picture(), potentials);
  ChooseIn("mnuImageIndicator", "optStressValue");
  EXPECT_NE(Picture(), potentials);
  EXPECT_TRUE(Label("lblUpDate").ends_with("     0step"));
}

TEST_F(Analysis, AFailedStepEndsTheProgramAndRescuesTheLayoutItStartedFrom) {
  model().Lambda = 1;
  model().StressTarget = 1e9F;
  const std::string before = Text();
  WriteFile(folder / "Rescue.model", "taken");
  In("mnuOptimization", [this](QDialog& dialog) {
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
  });
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), "taken");
  EXPECT_EQ(ReadFile(folder / "Rescue2.model"), before);
  EXPECT_FALSE(Find<QTimer>("tmrOpt")->isActive());
  EXPECT_NE(robot.Boxes().at(0).find((folder / "Rescue2.model").string()), std::string::npos);
  PressAt(0, 0);
  Menu("mnuClear");
  EXPECT_EQ(Text(), before) << "the model does not change any more";
}

}  // namespace
}  // namespace quillane::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
