// Uncommon states: half-made edits, failed openings and analyses, models that cannot be drawn, a
// full step counter. The model stays intact and the picture correct.
#include <QListWidget>
#include <QMenu>
#include <algorithm>

#include "ui/elided_label.h"
#include "ui/window.h"

namespace quillane::test {
namespace {

/// An analysed plate, and the file of another one.
class States : public Window {
 protected:
  States() {
    WriteFile(folder / "other.model", ModelFileText(Cantilever(3, 5)));
    Show(Slimming());
    bareLegend = Legend();
    Menu("mnuStressAnalysis");
  }

  bool Open(const char* name) { return Fill("mnuOpen", {{"txtFileName", name}}, "cmdOpen"); }
  QImage Legend() { return Find<PictureWidget>("picColorBar")->Image().copy(); }
  bool CanvasIsEmpty() {
    QImage blank = Picture();
    blank.fill(blank.pixel(0, 0));
    return Picture() == blank;
  }
  /// Expects that the window shows and keeps no results.
  void ExpectNoResults() {
    EXPECT_FALSE(IsEnabled("mnuOptimization") || IsEnabled("mnuHistory"));
    EXPECT_EQ(Legend(), bareLegend);
    EXPECT_EQ(model().MaxStress, 0);
  }

  QImage bareLegend;
};

TEST_F(States, AHalfMadeEditLeavesTheModelAndBringsBackWhatWasShown) {
  const std::function<void()> shows[] = {[this] { main->View().ShowMap(kShowStress); },
                                         [this] { main->View().ShowMap(kShowPotential); },
                                         [this] { Menu("mnuClear"); },
                                         [this] { main->View().ShowModel(); }};
  std::vector<std::function<void()>> drops = {[this] {
    const Integer mode = model().EditMode;
    main->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
    QTest::keyClick(main.get(), Qt::Key_Escape);
    EXPECT_EQ(model().EditMode, mode) << "Escape keeps the mode";
  }};
  for (const char* menu : {"mnuMaterial", "mnuFreedom", "mnuAppliedLoad", "mnuWidth",
                           "mnuDrivingParameter", "mnuMoveOrigin"}) {
    drops.push_back([this, menu] { Menu(menu); });
  }
  const std::string before = Text();
  for (const char* option : {"optDesignDomain", "optAddElements"}) {
    for (std::size_t show = 0; show < std::size(shows); ++show) {
      shows[show]();
      const QImage shown = Picture(), legend = Legend();
      const auto expectAsBefore = [&] {
        EXPECT_EQ(Picture(), shown);
        EXPECT_EQ(Legend(), legend);
        EXPECT_FALSE(HoldsCorner(model(), main->Edits()));
        EXPECT_EQ(Text(), before);
      };
      for (std::size_t drop = 0; drop < drops.size(); ++drop) {
        SCOPED_TRACE(testing::Message() << option << ", " << show << ", " << drop);
        ChooseIn("mnuShape", option);
        Press(350, 350);
        EXPECT_NE(Picture(), shown);
        drops[drop]();
        expectAsBefore();
      }
      ChooseIn("mnuShape", "optDesignDomain");
      for (const Single y : {50.0F, 950.0F}) PressAt(50, y);  // no column between them
      EXPECT_EQ(robot.Boxes().size(), 1U);
      expectAsBefore();
    }
    ChooseIn("mnuShape", option);
    Press(350, 350);
    const QImage marked = Picture();
    main->resize(main->size() + QSize(60, 40));
    main->resize(main->size() - QSize(60, 40));
    QCoreApplication::processEvents();
    EXPECT_EQ(Picture(), marked) << "the mark is part of every redraw";
    Menu("mnuStressAnalysis");
    Press(50, 50);
    EXPECT_EQ(Text(), before);
  }
  ChooseIn("mnuShape", "optDesignDomain");
  Press(350, 350);
  EXPECT_TRUE(Open("other.model"));
  Press(50, 50);
  EXPECT_EQ(model().ClickCount, 1) << "the mode stays, the corner is dropped";
  EXPECT_EQ(Text(), ModelFileText(Cantilever(3, 5)));
}

TEST_F(States, AFailedAnalysisClosesTheWayToSteps) {
  const std::function<void()> causes[] = {
      [this] { model().YoungModulus = 0; }, [this] { model().Lambda = 0; },
      [this] { std::ranges::fill(model().NodeLoad.Raw(), 0.0); }};
  for (const auto& cause : causes) {
    Show(Slimming());
    const QImage drawn = Picture();
    Menu("mnuStressAnalysis");
    main->Optimization();
    EXPECT_TRUE(IsEnabled("mnuOptimization") && robot.Boxes().empty());
    model().CellState = Slimming().CellState;
    cause();
    Menu("mnuStressAnalysis");
    EXPECT_EQ(robot.Boxes().size(), 1U);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(IsEnabled("mnuOptimization") || IsEnabled("mnuHistory"));
    EXPECT_EQ(Legend(), bareLegend);
    EXPECT_EQ(Picture(), drawn);
  }
  EXPECT_EQ(ended, -1);
}

TEST_F(States, ResultsOfNoAnalysisSaySo) {
  const auto note = [this] { return Find<ElidedLabel>("lblUpDate")->ToolTipText().toStdString(); };
  const auto look = [this] {
    ChooseIn("mnuValueIndicator", "optStressValue");
    Press(350, 350);
  };
  look();
  EXPECT_EQ(note(), "");
  EXPECT_TRUE(Open("other.model"));
  look();
  EXPECT_NE(note().find("Before FEA"), std::string::npos);
  main->WriteSummary();
  EXPECT_EQ(note(), "");
  ChooseIn("mnuImageIndicator", "optNeuronValue");
  EXPECT_NE(note().find("Before FEA"), std::string::npos);
  ChooseIn("mnuValueIndicator", "optLoadValue");
  Press(350, 350);
  EXPECT_EQ(note(), "") << "loads need no analysis";
}

TEST_F(States, ANewModelForgetsTheResultsOfTheOldOne) {
  main->Optimization();
  EXPECT_NE(Legend(), bareLegend);
  EXPECT_TRUE(Open("other.model"));
  ExpectNoResults();
  EXPECT_EQ(Label("lblUpDate"), "Width = 2000mm  Element Size = 100mm");
  EXPECT_EQ(model().StepCount, 0);
  Menu("mnuStressAnalysis");
  EXPECT_NE(Legend(), bareLegend);
  ChooseIn("mnuShape", "optDesignDomain");
  Press(0, 0);
  EXPECT_TRUE(IsEnabled("mnuOptimization"));
  Press(500, 500);
  ExpectNoResults();
}

TEST_F(States, AFailedOpeningLosesNothingAndEndsNothing) {
  const std::string standing = Text(), other = ReadFile(folder / "other.model"), title = Title();
  const std::string failure =
      "データ読込: ファイルを開くときにエラーが発生しました。\r\nファイルを選んでください。";
  WriteFile(folder / "text.model", "no model");
  EXPECT_FALSE(Open("text.model"));
  EXPECT_TRUE(robot.Details().starts_with((folder / "text.model").string())) << robot.Details();
  for (const char* name : {"", "no/such"}) {
    EXPECT_FALSE(Open(name) || Fill("mnuSave", {{"txtFileName", name}}, "cmdSave"));
  }
  EXPECT_EQ(robot.Boxes(), Texts(5, failure));
  EXPECT_TRUE(IsEnabled("mnuOptimization")) << "nothing was read";
  EXPECT_FALSE(std::filesystem::exists("Rescue.model"));
  WriteFile(folder / "a short.model", other.substr(0, other.size() / 2));
  EXPECT_FALSE(In("mnuOpen", [](QDialog& dialog) {
    auto* files = dialog.findChild<QListWidget*>("File1");
    files->setCurrentRow(0);
    emit files->itemDoubleClicked(files->item(0));
  }));
  EXPECT_EQ(robot.Boxes(), Texts{failure});
  EXPECT_EQ(Title(), title);
  EXPECT_EQ(model().CellColumnCount, 5) << "what was read stays";
  EXPECT_EQ(Label("lblUpDate"), "Width = 2000mm  Element Size = 100mm");
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), standing);
  EXPECT_NE(robot.Details().find((folder / "Rescue.model").string()), std::string::npos);
  ExpectNoResults();
  model().CellRowCount = 9;
  EXPECT_FALSE(Fill("mnuSave", {{"txtFileName", "mixture"}}, "cmdSave"));
  EXPECT_NE(robot.Details().find("CellState"), std::string::npos) << robot.Details();
  EXPECT_FALSE(std::filesystem::exists("mixture"));
}

TEST_F(States, AModelThatCannotBeDrawnSaysSoOnceAndShowsNothing) {
  const auto boxesInTime = [this] {
    QCoreApplication::processEvents();
    return robot.Boxes().size();
  };
  Model flat = Cantilever(3, 5), loose = flat, fine = flat;
  flat.DomainWidth = 0;
  loose.ElementNodes(7, 3) = 300;
  fine.ElementSize = 1e-3F;
  for (const Model& model : {flat, loose, fine}) {
    WriteFile(folder / "odd.model", ModelFileText(model));
    EXPECT_TRUE(Open("odd.model"));
    EXPECT_EQ(boxesInTime(), 1U);
    EXPECT_TRUE(CanvasIsEmpty());
    main->resize(main->size() + QSize(10, 0));
    Menu("mnuMoveOrigin");
    PressAt(30, 30);
    EXPECT_TRUE(CanvasIsEmpty());
    EXPECT_EQ(boxesInTime(), 0U) << "one box per reason";
  }
  EXPECT_TRUE(Open("other.model"));
  EXPECT_FALSE(CanvasIsEmpty());
  EXPECT_EQ(boxesInTime(), 0U);
}

TEST_F(States, TheDialogTellsHowTheStepsGo) {
  const auto tells = [this](const std::string& text) {
    return Report().find(text) != std::string::npos;
  };
  model().AvgStress = 1.23456, model().MaxStress = 234.567;
  EXPECT_TRUE(
      tells("Volume: 100.0% of that at the last FEA\nStress: mean 1.235, largest 234.6 MPa\n"
            "No step since the FEA."));
  In("mnuOptimization", [this](QDialog& dialog) {
    const QRect plate = main->View().PlateArea().toAlignedRect();
    const QPoint corner = Canvas()->mapToGlobal(QPoint());
    EXPECT_FALSE(dialog.frameGeometry().intersects(plate.translated(corner))) << "hides the plate";
  });
  const Array2<Integer> analysed = model().CellState;
  main->Optimization();
  EXPECT_TRUE(tells("\nThe layout has not changed since the FEA."));
  while (std::ranges::equal(model().CellState.Raw(), analysed.Raw())) main->Optimization();
  EXPECT_TRUE(tells("\nCells changed in the last step: "));
  EXPECT_FALSE(tells("100.0%") || tells("by hand"));
  Fill("mnuMaterial", {{"txtEmod", "70000"}});
  EXPECT_TRUE(tells("\nChanged by hand since the last FEA."));
  Menu("mnuStressAnalysis");
  EXPECT_FALSE(tells("by hand"));
  Fill("mnuWidth", {{"txtWidth", "1500"}});
  EXPECT_FALSE(tells("by hand"));
  Fill("mnuWidth", {{"txtUnitGrid", "50"}});
  EXPECT_TRUE(tells("by hand")) << "the volume differs";
}

TEST_F(States, AutomaticStepsEndBeforeTheOneThatMustFail) {
  model().StepCount = 32765;
  In("mnuOptimization", [this](QDialog& dialog) {
    Click(dialog, "cmdAutoStart");
    EXPECT_TRUE(QTest::qWaitFor([this] { return model().AutoOptimize == 0; }));
    Click(dialog, "cmdAutoStart");
    QTest::qWait(20);
    EXPECT_EQ(model().StepCount, 32767);
    EXPECT_NE(CourseOf(dialog).find("counter is full"), std::string::npos);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(ended, -1);
    Click(dialog, "cmdManual");
  });
  EXPECT_EQ(ended, 1) << "a requested step fails";
}

TEST_F(States, AHistoryIsWrittenStepByStepBesideTheEarlierOneOrEndsTheProgram) {
  WriteFile(folder / "History.tmp", "earlier");
  Menu("mnuHistory");
  main->Optimization();
  EXPECT_EQ(ReadFile(folder / "History.tmp~"), "earlier");
  EXPECT_EQ(std::ranges::count(ReadFile(folder / "History.tmp"), '\n'), 3);
  Menu("mnuClear");
  std::filesystem::remove("History.tmp");
  std::filesystem::create_directory("History.tmp");
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
}

TEST_F(States, TheMenuOpensByKeyAndTheLongestReadOutIsShownWhole) {
  main->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(main.get()));
  QTest::keyClick(main.get(), Qt::Key_F10);
  const auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(open->objectName(), "mnuFile");
  QApplication::activePopupWidget()->close();

  model().NodeDisp(1, 1) = model().NodeDisp(1, 2) = -1.23456789012345e-100;
  for (const int width : {1, 900, 2000}) {
    main->resize(width, 700);
    QCoreApplication::processEvents();
    ChooseIn("mnuValueIndicator", "optDisplacementValue");
    PressAt(0, 0);
    EXPECT_EQ(Label("lblUpDate"), "u = -1.23456789012345E-100mm  v = -1.23456789012345E-100mm");
    for (const char* name : {"lblUpDate", "lblMouseXY"}) {
      const auto* label = Find<ElidedLabel>(name);
      EXPECT_EQ(label->ShownText(), label->text());
      EXPECT_LE(label->geometry().right(), label->parentWidget()->width());
    }
  }
}

}  // namespace
}  // namespace quillane::test
