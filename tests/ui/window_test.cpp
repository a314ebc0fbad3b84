// The window itself: start-up, menus, layout, title, files, the picture and the end of the program.
#include "ui/window.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include "model/model_file.h"
#include "ui/picture_widget.h"

namespace quillane::test {
namespace {

std::string Tree(const QList<QAction*>& items, const std::string& indent) {
  std::string tree;
  for (const QAction* item : items) {
    tree += indent + item->objectName().toStdString() + " " +
            (item->isSeparator() ? "-" : item->text().toStdString()) +
            (item->isEnabled() ? "" : " (disabled)") + "\n";
    if (item->menu() != nullptr) tree += Tree(item->menu()->actions(), indent + "  ");
  }
  return tree;
}

TEST_F(Window, StartsWithItsMenusTextsAndView) {
  EXPECT_EQ(Tree(main->menuBar()->actions(), ""), R"(mnuFile File
  mnuOpen Open model
  mnuSave Save model
  mnuImageCopy Copy image
  mnuHistory Record history (disabled)
  separater2 -
  mnuExit Exit
mnuGraphicArea Graphic
  mnuWidth Width and Mesh Density
  mnuMoveOrigin Move Origin
  separater3 -
  mnuImageIndicator Graphics
  mnuValueIndicator Values
  separater5 -
  mnuClear Clear Model
mnuShape Shape
mnuAnalysis Parameter
  mnuMaterial Design Property
  mnuFreedom Freedom Conditions
  mnuAppliedLoad Applied Load
  mnuDrivingParameter Optimizaion Parameter
mnuStressAnalysis FEA
mnuOptimization Optimization (disabled)
)");
  EXPECT_EQ(main->windowTitle(),
            "Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.");
  EXPECT_EQ(Label("lblUpDate"), "Width = 2000mm  Element Size = 100mm");
  EXPECT_EQ(model().ViewRight, 1000);
  EXPECT_FLOAT_EQ(model().ViewTop, model().DomainHeight / 2);
  EXPECT_FALSE(main->tmrOpt->isActive());
}

TEST_F(Window, EveryCommandOfTheMenusOpensItsDialog) {
  Show(Cantilever(2, 3));
  Menu("mnuStressAnalysis");
  const std::pair<const char*, const char*> dialogs[] = {{"mnuOpen", "frmOpen"},
                                                         {"mnuSave", "frmSave"},
                                                         {"mnuWidth", "frmWidth"},
                                                         {"mnuImageIndicator", "frmImageIndicator"},
                                                         {"mnuValueIndicator", "frmValueIndicator"},
                                                         {"mnuShape", "frmShape"},
                                                         {"mnuMaterial", "frmMaterial"},
                                                         {"mnuFreedom", "frmFreedom"},
                                                         {"mnuAppliedLoad", "frmAppliedLoad"},
                                                         {"mnuDrivingParameter", "frmController"},
                                                         {"mnuOptimization", "frmOptimization"}};
  for (const auto& [item, form] : dialogs) {
    std::string seen;
    robot.Next([&seen](QDialog& dialog) {
      seen = dialog.objectName().toStdString();
      EXPECT_EQ(dialog.windowModality(), Qt::ApplicationModal);
      dialog.reject();
    });
    Menu(item);
    EXPECT_EQ(seen, form);
  }
}

TEST_F(Window, MinimizingIsToldByTheTitleAndRestoringRedraws) {
  Show(Plate(2, 2));
  main->SetTitleAfterOpening();
  const QImage before = Find<PictureWidget>("picCanvas")->Image().copy();
  main->showMinimized();
  EXPECT_EQ(main->windowTitle(), "POST");
  Menu("mnuClear");
  main->showNormal();
  QCoreApplication::processEvents();
  EXPECT_EQ(main->windowTitle(),
            "Quillane Optimization for Shape and Topology      HARROW Lab., Calder univ.");
  EXPECT_EQ(Find<PictureWidget>("picCanvas")->Image(), before);
}

TEST_F(Window, SavingOpeningAndSavingAgainGivesTheSameBytes) {
  Show(RandomPlate(7));
  const auto use = [this](const char* menu, const char* name, const char* button) {
    robot.Next([=](QDialog& dialog) {
      Type(dialog, "txtFileName", name);
      Click(dialog, button);
    });
    Menu(menu);
  };
  use("mnuSave", "a.model", "cmdSave");
  const std::string first = ReadFile(folder / "a.model");
  EXPECT_EQ(first, Text());
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  Show(Plate(1, 1));
  use("mnuOpen", "a.model", "cmdOpen");
  EXPECT_EQ(main->windowTitle(),
            "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.");
  EXPECT_EQ(model().HistoryRecording, 0);
  EXPECT_FALSE(Find<QAction>("mnuHistory")->isEnabled());
  EXPECT_FALSE(Find<QAction>("mnuOptimization")->isEnabled());
  use("mnuSave", "b.model", "cmdSave");
  EXPECT_EQ(ReadFile(folder / "b.model"), first);
}

TEST_F(Window, ClearingWipesThePictureAndEndsTheHistory) {
  Show(Cantilever(2, 3));
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  Menu("mnuHistory");
  EXPECT_EQ(robot.Boxes(), std::vector<std::string>{"警告: すでに履歴を記録しています。"});
  const std::string text = Text();
  Menu("mnuMoveOrigin");
  Menu("mnuClear");
  EXPECT_EQ(model().EditMode, 0);
  EXPECT_EQ(model().HistoryRecording, 0);
  EXPECT_FALSE(Find<QAction>("mnuHistory")->isEnabled());
  EXPECT_EQ(Text(), text);
  const QImage cleared = Find<PictureWidget>("picCanvas")->Image().copy();
  model().DomainDefined = 0;
  model().CellRowCount = model().NodeCount = 0;
  main->DrawCanvas();
  EXPECT_EQ(Find<PictureWidget>("picCanvas")->Image(), cleared);
}

TEST_F(Window, ThePictureIsCopiedAndSurvivesRepaints) {
  Show(RandomPlate(3));
  const QImage drawn = Find<PictureWidget>("picCanvas")->Image().copy();
  model() = Model{};
  QTest::qWait(1);
  main->repaint();
  Menu("mnuImageCopy");
  EXPECT_EQ(QGuiApplication::clipboard()->image(), drawn);
}

TEST_F(Window, ExitAndClosingEndTheProgramAtOnce) {
  Show(Cantilever(2, 3));
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  Menu("mnuExit");
  EXPECT_EQ(ended, 0);
  EXPECT_NE(ReadFile(folder / "History.tmp").find("Iteration, Max, Avg, Min\r\n0,"),
            std::string::npos);
  Restart();
  main->close();
  EXPECT_EQ(ended, 0);
}

}  // namespace
}  // namespace quillane::test
