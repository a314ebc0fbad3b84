// Analysis, optimization steps and their record through the window, and what their failures leave.
#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include "model/model_file.h"
#include "optimize/optimization_step.h"
#include "ui/picture_widget.h"
#include "ui/window.h"

namespace quillane::test {
namespace {

/// A short cantilever that has been analysed and loses some material at each step.
class Analysis : public Window {
 protected:
  Analysis() {
    Model plate = Cantilever(6, 12);
    plate.StressTarget = 4;
    plate.Epsilon = 3;
    plate.Lambda = 0.2F;
    Show(plate);
    Menu("mnuStressAnalysis");
  }
};

TEST_F(Analysis, TheFirstAnalysisOpensTheWayToOptimization) {
  EXPECT_EQ(Label("lblUpDate"), "  Volume = 7.20E+05mm^3");
  EXPECT_TRUE(Find<QAction>("mnuOptimization")->isEnabled());
  EXPECT_TRUE(Find<QAction>("mnuHistory")->isEnabled());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(robot.Boxes().empty());
  model().EditMode = 4;
  model().StepCount = 9;
  const QImage map = Find<PictureWidget>("picCanvas")->Image().copy();
  Menu("mnuStressAnalysis");
  EXPECT_EQ(model().EditMode, 0);
  EXPECT_EQ(model().StepCount, 0);
  EXPECT_EQ(Find<PictureWidget>("picCanvas")->Image(), map);
}

TEST_F(Window, AnAnalysisThatFailsIsReportedAndTheWindowStays) {
  Menu("mnuStressAnalysis");
  EXPECT_EQ(robot.Boxes().size(), 1U);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(Find<QAction>("mnuOptimization")->isEnabled());
  Model afloat = Cantilever(3, 3);
  for (Integer& flag : afloat.NodeFreedom.Raw()) flag = 0;
  Show(afloat);
  Menu("mnuStressAnalysis");
  EXPECT_EQ(robot.Boxes().size(), 1U) << "a plate that nothing holds does not converge";
  EXPECT_TRUE(Find<QAction>("mnuOptimization")->isEnabled()) << "the results stand";
  EXPECT_EQ(ended, -1);
}

TEST_F(Analysis, TheRecordedStepsAreThoseWithoutAWindow) {
  Model headless = model();
  Menu("mnuHistory");
  robot.Next([this](QDialog& dialog) {
    for (int step = 0; step < 3; ++step) Click(dialog, "cmdManual");
    EXPECT_TRUE(Label("lblUpDate").ends_with("mm^3     2step")) << Label("lblUpDate");
    const int before = model().StepCount;
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([&] { return model().StepCount >= before + 3; }));
    Click(dialog, "cmdAutoStop");
    const int stopped = model().StepCount;
    QTest::qWait(20);
    EXPECT_EQ(model().StepCount, stopped);
    Click(dialog, "cmdAutoStart");
    Click(dialog, "cmdCancel");
  });
  Menu("mnuOptimization");
  EXPECT_FALSE(main->tmrOpt->isActive());
  EXPECT_EQ(model().AutoOptimize, 0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  const int steps = model().StepCount;
  EXPECT_LT(model().Volume, 7.2e5);
  Menu("mnuClear");

  History history;
  history.Start(headless, folder / "headless.tmp");
  for (int step = 0; step < steps; ++step) Optimization(headless, history);
  history.Close(headless);
  EXPECT_EQ(ReadFile(folder / "History.tmp"), ReadFile(folder / "headless.tmp"));
  EXPECT_EQ(Text(), ModelText(headless));
}

TEST_F(Analysis, TheMapOfAStepIsTheOneChosen) {
  const auto picture = [this] { return Find<PictureWidget>("picCanvas")->Image().copy(); };
  ChooseIn("mnuImageIndicator", "optNeuronValue");
  EXPECT_EQ(model().DisplayMode, 2);
  main->Optimization();
  const QImage potentials = picture();
  main->DrawNeuronMap();
  EXPECT_EQ(picture(), potentials);
  ChooseIn("mnuImageIndicator", "optStressValue");
  EXPECT_NE(picture(), potentials);
  model().DisplayMode = 3;
  main->DrawCanvas();
  const QImage plain = picture();
  main->Optimization();
  EXPECT_EQ(picture(), plain);
  EXPECT_TRUE(Label("lblUpDate").ends_with("     1step"));
}

TEST_F(Analysis, AFailedStepEndsTheProgramAndRescuesTheLayoutItStartedFrom) {
  model().Lambda = 1;
  model().StressTarget = 1e9F;
  const std::string before = Text();
  WriteFile(folder / "Rescue.model", "taken");
  robot.Next([this](QDialog& dialog) {
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
  });
  Menu("mnuOptimization");
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), "taken");
  EXPECT_EQ(ReadFile(folder / "Rescue2.model"), before);
  EXPECT_FALSE(main->tmrOpt->isActive());
  const std::vector<std::string> boxes = robot.Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_NE(boxes[0].find((folder / "Rescue2.model").string()), std::string::npos) << boxes[0];
  main->picCanvas_MouseDown(1, 0, 0, 0);
  Menu("mnuClear");
  EXPECT_EQ(Text(), before) << "nothing happens to the model any more";
}

}  // namespace
}  // namespace quillane::test
