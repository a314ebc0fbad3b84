// The dialogs as a user works them: what they store, refuse and leave behind; files.
#include <QAbstractButton>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>
#include <set>

#include "ui/file_name.h"
#include "ui/window.h"

namespace quillane::test {
namespace {

TEST_F(Window, LeavingADialogStoresNothing) {
  Show(Plate(2, 2));
  model().LoadFx = 3;
  const std::string before = Text();
  const std::pair<const char*, Integer> modes[] = {{"mnuFreedom", kModeNothing},
                                                   {"mnuAppliedLoad", kModeNothing},
                                                   {"mnuWidth", kModeNothing},
                                                   {"mnuMaterial", kModeNothing},
                                                   {"mnuShape", kModeStress},
                                                   {"mnuValueIndicator", kModeStress},
                                                   {"mnuDrivingParameter", kModeNothing},
                                                   {"mnuOpen", kModeStress},
                                                   {"mnuImageIndicator", kModeStress},
                                                   {"mnuSave", kModeStress}};
  for (const bool byButton : {false, true}) {
    for (const auto& [menu, mode] : modes) {
      model().EditMode = kModeStress;
      EXPECT_TRUE(In(menu, [byButton](QDialog& dialog) {
        for (auto* box : dialog.findChildren<QLineEdit*>()) box->setText("77");
        for (auto* option : dialog.findChildren<QRadioButton*>()) option->setChecked(true);
        if (byButton) {
          dialog.findChildren<QAbstractButton*>(QRegularExpression("cmd(Exit|Cancel)"))
              .first()
              ->click();
        } else {
          QTest::keyClick(&dialog, Qt::Key_Escape);
        }
      }));
      EXPECT_EQ(model().EditMode, mode) << menu;
    }
  }
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(model().LoadFx, 3);
  EXPECT_EQ(model().DisplayMode, Model{}.DisplayMode);
}

TEST_F(Window, OptionsSetTheEditMode) {
  const struct {
    const char *menu, *option;
    Integer mode;
  } rows[] = {{"mnuShape", "optDesignDomain", kModeDomain},
              {"mnuShape", "optAddElements", kModeDesign},
              {"mnuShape", "optRemoveElements", kModeRemove},
              {"mnuShape", "optAddNonDesignElements", kModeNonDesign},
              {"mnuShape", "optDeleteDesignDomain", kModeCutOut},
              {"mnuShape", "optDoNot", kModeNothing},
              {"mnuFreedom", "optFixX", kModeFixX},
              {"mnuFreedom", "optFixY", kModeFixY},
              {"mnuFreedom", "optFixXY", kModeFixXY},
              {"mnuFreedom", "optFree", kModeFree},
              {"mnuAppliedLoad", "optLoadOn", kModeLoad},
              {"mnuAppliedLoad", "optLoadOff", kModeNothing},
              {"mnuValueIndicator", "optDisplacementValue", kModeDisplacement},
              {"mnuValueIndicator", "optStressValue", kModeStress},
              {"mnuValueIndicator", "optNeuronValue", kModePotential},
              {"mnuValueIndicator", "optLoadValue", kModeLoadValue},
              {"mnuValueIndicator", "optDoNot", kModeOrigin}};
  const std::set<Integer> needDomain = {kModeDesign, kModeRemove, kModeNonDesign,
                                        kModeCutOut, kModeFixX,   kModeFixY,
                                        kModeFixXY,  kModeFree,   kModeLoad};
  for (const auto& [menu, option, mode] : rows) {
    for (const bool defined : {false, true}) {
      SCOPED_TRACE(option);
      model().DomainDefined = defined ? kTrue : 0;
      model().EditMode = kModeOrigin;
      EXPECT_TRUE(ChooseIn(menu, option));
      const bool refused = !defined && needDomain.contains(mode);
      const int before = menu == std::string("mnuShape") ? kModeOrigin : kModeNothing;
      EXPECT_EQ(model().EditMode, refused ? before : mode);
      EXPECT_EQ(robot.Boxes(), Texts(refused, "警告: \r\n設計領域をはじめに入力してください。"));
    }
  }
  EXPECT_TRUE(Fill("mnuShape", {}));
  EXPECT_EQ(model().EditMode, kModeNothing) << "what stands chosen at first";
}

TEST_F(Window, TypedNumbersGoToTheModelAndTheStatusLine) {
  EXPECT_TRUE(Fill("mnuMaterial", {}));
  EXPECT_EQ(Label("lblUpDate"), "ヤング率 = 210000MPa  板厚 = 1mm  ポアソン比 = 0.3");
  EXPECT_TRUE(
      Fill("mnuMaterial", {{"txtEmod", "7e4"}, {"txtThickness", "-2.5mm"}, {"txtPoison", "nu"}}));
  EXPECT_EQ(model().YoungModulus, 70000);
  EXPECT_EQ(model().Thickness, -2.5);
  EXPECT_EQ(model().PoissonRatio, 0);

  EXPECT_TRUE(Fill("mnuAppliedLoad", {{"txtLoadX", "10"}, {"txtLoadY", "-5 N"}}));
  EXPECT_EQ(Label("lblUpDate"), "x方向荷重成分 = 10N   y方向荷重成分 = -5N");
  EXPECT_EQ(model().LoadFy, -5);

  model().ViewRight = 12;
  EXPECT_TRUE(Fill("mnuWidth", {{"txtWidth", "1000.5"}, {"txtUnitGrid", "12.5"}}));
  EXPECT_EQ(Label("lblUpDate"), "Width = 1000.5mm  Element Size = 12.5mm");
  EXPECT_EQ(model().ViewRight, 500.25F);
  const QSize canvas = main->CanvasSize();
  EXPECT_FLOAT_EQ(model().DomainHeight, 1000.5F * static_cast<float>(canvas.height()) /
                                            static_cast<float>(canvas.width()));

  const auto parameters = [this](const char* stress, const char* epsilon, const char* lambda) {
    EXPECT_TRUE(
        Fill("mnuDrivingParameter",
             {{"txtDpStress", stress}, {"txtDpEpsilon", epsilon}, {"txtDpLambda", lambda}}));
    return Label("lblUpDate");
  };
  EXPECT_EQ(parameters(" 1e2x", "2.5", "0.1x"),
            "Stress Target = 100MPa   Epsilon = 2   Lambda = 0.1");
  EXPECT_EQ(parameters("", "abc", "1,5"), "Stress Target = 0MPa   Epsilon = 0   Lambda = 1");
}

TEST_F(Window, NumbersTooLargeForTheirTypeAreRefusedAndTheDialogStaysOpen) {
  const struct {
    const char* menu;
    Entries entries;
  } rows[] = {{"mnuAppliedLoad", {{"txtLoadX", "1"}, {"txtLoadY", "1e309"}}},
              {"mnuMaterial", {{"txtEmod", "1"}, {"txtThickness", "1e309"}}},
              {"mnuDrivingParameter", {{"txtDpStress", "5"}, {"txtDpEpsilon", "32767.5"}}},
              {"mnuDrivingParameter", {{"txtDpStress", "4e38"}}},
              {"mnuDrivingParameter", {{"txtDpStress", "5"}, {"txtDpLambda", "-4e38"}}}};
  const std::string before = Text();
  for (const auto& [menu, entries] : rows) {
    EXPECT_FALSE(Fill(menu, entries)) << menu;
    EXPECT_EQ(robot.Boxes(), Texts{"警告: 数値が大きすぎます。\n値を変えてください。"});
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(model().LoadFx, 0);
  }
}

TEST_F(Window, ARescueFileWithoutAPlaceGoesToTheTemporaryFolderOrIsReportedAsMissing) {
  std::filesystem::create_directory("gone");
  std::filesystem::current_path("gone");
  std::filesystem::remove(folder / "gone");
  const QByteArray temporary = qgetenv("TMPDIR");
  const auto fail = [this](const std::filesystem::path& temporaryFolder) {
    qputenv("TMPDIR", QByteArray::fromStdString(temporaryFolder.string()));
    Restart();
    Show(Plate(2, 2));
    model().EditMode = kModePotential;
    PressAt(10, 10);
    EXPECT_EQ(ended, 1);
    return robot.Boxes().at(0);
  };
  const std::string box = fail(folder.Path());
  EXPECT_NE(box.find((folder / "Rescue.model").string()), std::string::npos) << box;
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
  EXPECT_NE(fail(folder / "none").find("could not be saved"), std::string::npos);
  temporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporary);
}

TEST_F(Window, WidthRefusesWhatCannotBeDrawn) {
  const struct {
    const char *width, *elementSize, *text, *reason;
  } rows[] = {{"0", "100", "警告: 表示幅", "zero width"},
              {"2000", "-1", "警告: 要素サイズ", "negative size"},
              {"2000", "1e-50", "警告: 要素サイズ", "0 in single precision"},
              {"2000", "0.0305", "警告: この表示幅と要素サイズ", "32787 lines to the right edge"},
              {"1e999", "100", "警告: 表示幅", "no Double"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.reason);
    EXPECT_FALSE(Fill("mnuWidth", {{"txtWidth", row.width}, {"txtUnitGrid", row.elementSize}}));
    const Texts boxes = robot.Boxes();
    EXPECT_TRUE(boxes.size() == 1 && boxes[0].starts_with(row.text));
    EXPECT_EQ(model().DomainWidth, 2000);
    EXPECT_EQ(model().ElementSize, 100);
  }
  EXPECT_TRUE(Fill("mnuWidth", {{"txtWidth", "2000"}, {"txtUnitGrid", "0.0306"}}));
}

TEST_F(Window, FileListsFollowTheFolder) {
  const std::string odd = "x\nz\xFF\xC3.model";
  std::filesystem::create_directories(folder / "sub" / "deep.model");
  for (const std::string& name :
       {std::string("b.model"), std::string("A.model"), odd, std::string("c.txt"),
        std::string(".hidden.model"), std::string("D.MODEL"), std::string("sub/inner.model")}) {
    WriteFile(folder / name, "");
  }
  EXPECT_EQ(FileNameBytes(FileNameText(odd)), odd);
  In("mnuOpen", [&](QDialog& dialog) {
    auto& files = *dialog.findChild<QListWidget*>("File1");
    auto& folders = *dialog.findChild<QTreeWidget*>("Dir1");
    auto& name = *dialog.findChild<QLineEdit*>("txtFileName");
    const auto names = [&files] {
      QStringList shown;
      for (int i = 0; i < files.count(); ++i) shown += files.item(i)->text();
      return shown;
    };
    const auto pick = [&folders](const char* text) {
      folders.setCurrentItem(
          folders.findItems(text, Qt::MatchExactly | Qt::MatchRecursive).front());
    };
    const QStringList all = {"A.model", "b.model", "D.MODEL", FileNameText(odd)};
    EXPECT_EQ(names(), all);
    for (const char* before : {"", "typed"}) {  // also a second click on the same row
      name.setText(before);
      const QPoint row = files.visualItemRect(files.item(1)).center();
      QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, row);
      EXPECT_EQ(name.text(), "b.model");
    }
    QTest::keyClick(&files, Qt::Key_Up);
    EXPECT_EQ(name.text(), "A.model");
    pick("sub");
    QTest::keyClick(&folders, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(names(), QStringList({"inner.model"}));
    pick("..");
    emit folders.itemDoubleClicked(folders.currentItem(), 0);
    EXPECT_EQ(names(), all);
    pick("sub");
    std::filesystem::remove_all("sub");
    QTest::keyClick(&folders, Qt::Key_Return);
    EXPECT_EQ(robot.Boxes().size(), 1U);
    EXPECT_EQ(names(), all);
  });
}

TEST_F(Window, SavingOpeningAndSavingAgainGivesTheSameBytes) {
  Show(RandomPlate(7));
  std::filesystem::create_directory("sub");
  EXPECT_TRUE(In("mnuSave", [](QDialog& dialog) {
    Enter(dialog, "txtFileName", "sub/../plate");  // the text as typed, nothing added
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtFileName"), Qt::Key_Return);
  }));
  EXPECT_EQ(model().ModelFilePath, std::filesystem::current_path().string() + "/sub/../plate");
  const std::string saved = ReadFile(folder / "plate");
  EXPECT_EQ(saved, Text());
  Menu("mnuStressAnalysis");
  Menu("mnuHistory");
  EXPECT_EQ(model().HistoryRecording, kTrue);
  Show(Plate(1, 1));
  model().DomainDefined = 0;
  EXPECT_TRUE(Fill("mnuOpen", {{"txtFileName", "plate"}}, "cmdOpen"));
  EXPECT_EQ(Title(),
            "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.");
  EXPECT_EQ(model().DomainDefined, kTrue);
  EXPECT_EQ(model().HistoryRecording, 0);
  EXPECT_FALSE(IsEnabled("mnuHistory") || IsEnabled("mnuOptimization"));
  EXPECT_TRUE(Fill("mnuSave", {{"txtFileName", "again"}}, "cmdSave"));
  EXPECT_EQ(ReadFile(folder / "again"), saved);
}

TEST_F(Window, AFileFailureIsReportedAndTheDialogStaysOpen) {
  const std::string whole = ModelFileText(Cantilever(3, 5)), title = Title();
  const Texts failure = {
      "データ読込: ファイルを開くときにエラーが発生しました。\r\nファイルを選んでください。"};
  for (const std::string& text : {ModelFileText(Model{}), whole.substr(0, whole.size() / 2)}) {
    WriteFile(folder / "bad.model", text);
    EXPECT_FALSE(In("mnuOpen", [](QDialog& dialog) {
      auto* files = dialog.findChild<QListWidget*>("File1");
      files->setCurrentRow(0);
      emit files->itemDoubleClicked(files->item(0));
    }));
    EXPECT_EQ(robot.Boxes(), failure);
  }
  EXPECT_EQ(model().CellColumnCount, 5) << "what was read stays";
  EXPECT_EQ(model().DomainDefined, 0);
  for (const char* name : {"", "no/such"}) {
    EXPECT_FALSE(Fill("mnuOpen", {{"txtFileName", name}}, "cmdOpen"));
    EXPECT_FALSE(Fill("mnuSave", {{"txtFileName", name}}, "cmdSave"));
    EXPECT_EQ(robot.Boxes(), (Texts{failure[0], failure[0]}));
  }
  EXPECT_EQ(Title(), title);
}

}  // namespace
}  // namespace quillane::test
