// States that people get into: half-made edits, failed openings, models that cannot be drawn, a
// full step counter. The model stays whole and the picture tells the truth.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <algorithm>

#include "ui/elided_label.h"
#include "ui/picture_widget.h"
#include "ui/window.h"

namespace quillane::test {
namespace {

/// An analysed plate with a saved copy of another one beside it.
class States : public Window {
 protected:
  States() {
    WriteFile(folder / "other.model", ModelFileText(Cantilever(3, 5)));
    Show(Slimming());
    bareLegend = Legend();
    Menu("mnuStressAnalysis");
  }

  bool Open(const char* name) { return Fill("mnuOpen", {{"txtFileName", name}}, "cmdOpen"); }
  QImage Legend() { return main->findChild<PictureWidget*>("picColorBar")->Image().copy(); }
  bool CanvasIsEmpty() {
    QImage blank = Picture();
    blank.fill(blank.pixel(0, 0));
    return Picture() == blank;
  }
  Texts BoxesInTime() {
    QCoreApplication::processEvents();
    return robot.Boxes();
  }
  std::string CourseText() {
    std::string text;
    In("mnuOptimization", [&](QDialog& dialog) {
      text = dialog.findChild<QLabel*>("lblCourse")->text().toStdString();
    });
    return text;
  }

  QImage bareLegend;
};

TEST_F(States, AHalfMadeEditLeavesTheModelAndGoesWithItsMode) {
  const char* const enders[] = {"mnuMaterial",      "mnuFreedom",          "mnuAppliedLoad",
                                "mnuWidth",         "mnuDrivingParameter", "mnuMoveOrigin",
                                "mnuStressAnalysis"};
  Show(Slimming());
  const QImage unmarked = Picture();
  ChooseIn("mnuShape", "optDesignDomain");
  for (const Single y : {50.0F, 950.0F}) PressAt(50, y);  // no column between them
  EXPECT_EQ(Picture(), unmarked) << "the mark of a refused domain goes with it";
  EXPECT_EQ(robot.Boxes().size(), 1U);
  for (const char* option : {"optDesignDomain", "optAddElements"}) {
    for (const char* ender : enders) {
      SCOPED_TRACE(std::string(option) + ", " + ender);
      Show(Slimming());
      const std::string before = Text();
      const QImage plain = Picture();
      ChooseIn("mnuShape", option);
      Press(350, 350);
      const QImage marked = Picture();
      EXPECT_NE(marked, plain);
      main->resize(main->size() + QSize(60, 40));
      main->resize(main->size() - QSize(60, 40));
      QCoreApplication::processEvents();
      EXPECT_EQ(Picture(), marked) << "the mark is part of every redraw";
      Menu(ender);
      if (ender != std::string("mnuStressAnalysis")) {
        EXPECT_EQ(Picture(), plain);
      }
      PressAt(50, 50);
      EXPECT_EQ(Text(), before);
    }
  }
  ChooseIn("mnuImageIndicator", "optStressValue");
  const QImage map = Picture();
  ChooseIn("mnuShape", "optDesignDomain");
  Press(350, 350);
  ChooseIn("mnuImageIndicator", "optStressValue");
  EXPECT_NE(Picture(), map);
  EXPECT_TRUE(Open("other.model"));
  Press(50, 50);
  EXPECT_EQ(model().EditMode, kModeNothing);
  EXPECT_EQ(Text(), ModelFileText(Cantilever(3, 5)));
}

TEST_F(States, OpeningForgetsTheResultsOfTheOldModel) {
  main->Optimization();
  EXPECT_NE(Legend(), bareLegend);
  EXPECT_TRUE(Open("other.model"));
  EXPECT_EQ(Legend(), bareLegend);
  EXPECT_EQ(Label("lblUpDate"), "Width = 2000mm  Element Size = 100mm");
  EXPECT_EQ(model().StepCount, 0);
  EXPECT_EQ(model().MaxStress, 0);
  Menu("mnuStressAnalysis");
  EXPECT_NE(Legend(), bareLegend);
  ChooseIn("mnuShape", "optDesignDomain");
  Press(0, 0);
  EXPECT_TRUE(IsEnabled("mnuOptimization"));
  Press(500, 500);
  EXPECT_FALSE(IsEnabled("mnuOptimization") || IsEnabled("mnuHistory"));
  EXPECT_EQ(Legend(), bareLegend);
  EXPECT_EQ(model().MaxStress, 0);
}

TEST_F(States, AFailedOpeningLosesNothingAndEndsNothing) {
  const std::string standing = Text(), other = ReadFile(folder / "other.model");
  WriteFile(folder / "text.model", "no model");
  EXPECT_FALSE(Open("text.model"));
  EXPECT_TRUE(IsEnabled("mnuOptimization")) << "nothing was read";
  EXPECT_FALSE(std::filesystem::exists("Rescue.model"));
  WriteFile(folder / "short.model", other.substr(0, other.find("0.3")));
  EXPECT_FALSE(Open("short.model"));
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), standing);
  EXPECT_NE(robot.Details().find((folder / "Rescue.model").string()), std::string::npos);
  EXPECT_FALSE(IsEnabled("mnuOptimization") || IsEnabled("mnuHistory"));
  EXPECT_EQ(model().MaxStress, 0);
  EXPECT_EQ(Legend(), bareLegend);
  for (const char* menu : {"mnuStressAnalysis", "mnuImageIndicator", "mnuClear", "mnuWidth"}) {
    Fill(menu, {});
  }
  for (const Integer mode : {kModeDesign, kModeLoad, kModeFixX, kModeStress, kModeLoadValue}) {
    model().EditMode = mode;
    for (const Single place : {50.0F, 250.0F, 450.0F, 1150.0F}) PressAt(place, place / 2);
  }
  EXPECT_EQ(ended, -1);
  model().CellRowCount = 9;
  EXPECT_FALSE(Fill("mnuSave", {{"txtFileName", "mixture"}}, "cmdSave"));
  EXPECT_NE(robot.Details().find("CellState"), std::string::npos) << robot.Details();
  EXPECT_FALSE(std::filesystem::exists("mixture"));
}

TEST_F(States, AModelThatCannotBeDrawnSaysSoOnceAndShowsNothing) {
  Model flat = Cantilever(3, 5), loose = flat, fine = flat;
  flat.DomainWidth = 0;
  loose.ElementNodes(7, 3) = 300;
  fine.ElementSize = 1e-3F;
  for (const Model& model : {flat, loose, fine}) {
    WriteFile(folder / "odd.model", ModelFileText(model));
    EXPECT_TRUE(Open("odd.model"));
    EXPECT_EQ(BoxesInTime().size(), 1U);
    EXPECT_TRUE(CanvasIsEmpty());
    main->resize(main->size() + QSize(10, 0));
    Menu("mnuMoveOrigin");
    PressAt(30, 30);
    EXPECT_TRUE(CanvasIsEmpty());
    EXPECT_EQ(BoxesInTime().size(), 0U) << "one box for one reason";
    for (const char* menu : {"mnuStressAnalysis", "mnuImageIndicator", "mnuClear"}) Fill(menu, {});
    BoxesInTime();
    EXPECT_EQ(ended, -1);
  }
  EXPECT_TRUE(Open("other.model"));
  EXPECT_FALSE(CanvasIsEmpty());
  EXPECT_TRUE(BoxesInTime().empty());
}

TEST_F(States, TheDialogTellsHowTheStepsGo) {
  const std::string stresses = QStringLiteral("Stress: mean %1, largest %2 MPa")
                                   .arg(model().AvgStress, 0, 'g', 4)
                                   .arg(model().MaxStress, 0, 'g', 4)
                                   .toStdString();
  EXPECT_EQ(CourseText(),
            "Volume: 100.0% of that at the last FEA\n" + stresses + "\nNo step since the FEA.");
  const Array2<Integer> analysed = model().CellState;
  main->Optimization();
  EXPECT_NE(CourseText().find("\nThe layout has not changed since the FEA."), std::string::npos);
  while (std::ranges::equal(model().CellState.Raw(), analysed.Raw())) main->Optimization();
  const std::string after = CourseText();
  EXPECT_NE(after.find("\nCells changed in the last step: "), std::string::npos) << after;
  EXPECT_EQ(after.find("100.0%"), std::string::npos) << after;
  EXPECT_EQ(after.find("by hand"), std::string::npos) << after;
  Fill("mnuMaterial", {{"txtEmod", "70000"}});
  EXPECT_NE(CourseText().find("\nChanged by hand since the last FEA."), std::string::npos);
  Menu("mnuStressAnalysis");
  EXPECT_EQ(CourseText().find("by hand"), std::string::npos);
}

TEST_F(States, AutomaticStepsEndBeforeTheOneThatMustFail) {
  model().StepCount = 32765;
  In("mnuOptimization", [this](QDialog& dialog) {
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return model().AutoOptimize == 0; }));
    Click(dialog, "cmdAutoStart");
    QTest::qWait(20);
    EXPECT_EQ(model().StepCount, 32767);
    EXPECT_TRUE(dialog.findChild<QLabel*>("lblCourse")->text().contains("counter is full"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(ended, -1);
    Click(dialog, "cmdManual");
  });
  EXPECT_EQ(ended, 1) << "asked for, it fails";
}

TEST_F(States, AStressReadOutWhereTheGridFitsNoLongerWarns) {
  model().ElementSize = 10;
  ChooseIn("mnuValueIndicator", "optStressValue");
  PressAt(1100, 500);
  EXPECT_EQ(robot.Boxes(), Texts{"警告: 選ばれた要素は設計領域にありません。"});
  ChooseIn("mnuValueIndicator", "optNeuronValue");
  PressAt(1100, 500);
  ChooseIn("mnuValueIndicator", "optDisplacementValue");
  PressAt(1100, 500);
  EXPECT_EQ(robot.Boxes().size(), 2U);
  EXPECT_EQ(ended, -1);
}

TEST_F(States, AnEarlierHistoryIsKeptBesideTheNewOneWhichIsWrittenStepByStep) {
  Menu("mnuHistory");
  main->Optimization();
  const std::string first = ReadFile(folder / "History.tmp");
  EXPECT_EQ(std::ranges::count(first, '\n'), 3) << "the step's record is in the file";
  Menu("mnuClear");
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  EXPECT_EQ(ReadFile(folder / "History.tmp~"), first);
  EXPECT_EQ(std::ranges::count(ReadFile(folder / "History.tmp"), '\n'), 2);
}

TEST_F(States, AHistoryThatCannotBeWrittenEndsTheProgramWithARescueFile) {
  std::filesystem::create_directory("History.tmp");
  Menu("mnuHistory");
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), ModelFileText(Slimming()));
}

TEST_F(States, KeysTypingAndMovesAreFollowed) {
  In("mnuAppliedLoad", [](QDialog& dialog) {
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtLoadY"), Qt::Key_5);
    Click(dialog, "cmdOK");
  });
  EXPECT_EQ(model().EditMode, kModeLoad) << "who types a force wants to apply it";
  Menu("mnuMoveOrigin");
  PressAt(300, 200);
  EXPECT_EQ(Label("lblMouseXY"), "x = 0mm  y = 0mm");
  main->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
  QTest::keyClick(main.get(), Qt::Key_F10);
  const auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(open->objectName(), "mnuFile");
  QApplication::activePopupWidget()->close();
}

TEST_F(States, TheLongestReadOutIsShownWhole) {
  model().NodeDisp(1, 1) = model().NodeDisp(1, 2) = -1.23456789012345e-100;
  for (const int width : {1, 900, 2000}) {
    main->resize(width, 700);
    QCoreApplication::processEvents();
    ChooseIn("mnuValueIndicator", "optDisplacementValue");
    PressAt(0, 0);
    EXPECT_EQ(Label("lblUpDate"), "u = -1.23456789012345E-100mm  v = -1.23456789012345E-100mm");
    for (const char* name : {"lblUpDate", "lblMouseXY"}) {
      const auto* label = main->findChild<ElidedLabel*>(name);
      EXPECT_EQ(label->ShownText(), label->text());
      EXPECT_LE(label->geometry().right(), label->parentWidget()->width());
    }
  }
}

}  // namespace
}  // namespace quillane::test
