// The dialogs as a user operates them: what they store and refuse; files.
#include <QListWidget>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTreeWidget>

#include "ui/folder.h"
#include "ui/window.h"

namespace quillane::test {
namespace {

TEST_F(Window, LeavingADialogStoresNothing) {
  Show(Plate(2, 2));
  model().LoadFx = 3;
  const std::string before = Text();
  const auto leave = [](QDialog& dialog, bool byButton) {
    for (auto* box : dialog.findChildren<QLineEdit*>()) box->setText("77");
    for (auto* option : dialog.findChildren<QRadioButton*>()) option->setChecked(true);
    if (byButton) {
      const QRegularExpression names("cmd(Exit|Cancel)");
      dialog.findChildren<QAbstractButton*>(names).first()->click();
    } else {
      QTest::keyClick(&dialog, Qt::Key_Escape);
    }
  };
  const std::pair<Integer, std::vector<const char*>> modes[] = {
      {kModeNothing,
       {"mnuFreedom", "mnuAppliedLoad", "mnuWidth", "mnuMaterial", "mnuDrivingParameter"}},
      {kModeStress, {"mnuShape", "mnuValueIndicator", "mnuOpen", "mnuImageIndicator", "mnuSave"}}};
  for (const auto& [mode, menus] : modes) {
    for (const char* menu : menus) {
      for (const bool byButton : {false, true}) {
        model().EditMode = kModeStress;
        EXPECT_TRUE(In(menu, [&](QDialog& dialog) { leave(dialog, byButton); }));
        EXPECT_EQ(model().EditMode, mode) << menu;
      }
    }
  }
  EXPECT_EQ(Text(), before);
  EXPECT_EQ(model().LoadFx, 3);
  EXPECT_EQ(model().DisplayMode, Model{}.DisplayMode);
}

TEST_F(Window, OptionsThatEditADomainNeedOne) {
  const std::pair<const char*, Texts> needDomain[] = {
      {"mnuShape",
       {"optAddElements", "optRemoveElements", "optAddNonDesignElements", "optDeleteDesignDomain"}},
      {"mnuFreedom", {"optFixX", "optFixY", "optFixXY", "optFree"}},
      {"mnuAppliedLoad", {"optLoadOn"}}};
  for (const auto& [menu, options] : needDomain) {
    for (const std::string& option : options) {
      model().EditMode = kModeOrigin;
      EXPECT_TRUE(ChooseIn(menu, option.c_str()));
      EXPECT_EQ(model().EditMode, menu == std::string("mnuShape") ? kModeOrigin : kModeNothing);
      EXPECT_EQ(robot.Boxes(), Texts{"警告: \r\n設計領域をはじめに入力してください。"}) << option;
    }
  }
  for (const char* option :
       {"optDisplacementValue", "optStressValue", "optNeuronValue", "optLoadValue", "optDoNot"}) {
    EXPECT_TRUE(ChooseIn("mnuValueIndicator", option));
  }
  EXPECT_EQ(model().EditMode, kModeLoadValue) << "Nothing keeps the mode";
  EXPECT_TRUE(robot.Boxes().empty());
  EXPECT_TRUE(Fill("mnuShape", {}));
  EXPECT_EQ(model().EditMode, kModeNothing) << "the option selected at first";
  model().DomainDefined = kTrue;
  EXPECT_TRUE(In("mnuAppliedLoad", [](QDialog& dialog) {
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtLoadY"), Qt::Key_5);
    Click(dialog, "cmdOK");
  }));
  EXPECT_EQ(model().EditMode, kModeLoad) << "typing a force selects applying it";
}

TEST_F(Window, TypedNumbersGoToTheModelAndTheStatusLine) {
  const struct {
    const char* menu;
    Entries entries;
    std::string told;
  } rows[] = {{"mnuMaterial", {}, "ヤング率 = 210000MPa  板厚 = 1mm  ポアソン比 = 0.3"},
              {"mnuMaterial",
               {{"txtEmod", "7e4"}, {"txtThickness", "-2.5mm"}, {"txtPoison", "nu"}},
               "ヤング率 = 70000MPa  板厚 = -2.5mm  ポアソン比 = 0"},
              {"mnuAppliedLoad",
               {{"txtLoadX", "10"}, {"txtLoadY", "-5 N"}},
               "x方向荷重成分 = 10N   y方向荷重成分 = -5N"},
              {"mnuDrivingParameter",
               {{"txtDpStress", " 1e2x"}, {"txtDpEpsilon", "2.5"}, {"txtDpLambda", "1,5"}},
               "Stress Target = 100MPa   Epsilon = 2   Lambda = 1"},
              {"mnuWidth",
               {{"txtWidth", "1000.5"}, {"txtUnitGrid", "12.5"}},
               "Width = 1000.5mm  Element Size = 12.5mm"}};
  model().ViewRight = 12;
  for (const auto& [menu, entries, told] : rows) {
    EXPECT_TRUE(Fill(menu, entries));
    EXPECT_EQ(Label("lblUpDate"), told);
  }
  EXPECT_EQ(model().YoungModulus, 70000);
  EXPECT_EQ(model().LoadFy, -5);
  EXPECT_EQ(model().ViewRight, 500.25F);
  const QSize canvas = Canvas()->size();
  EXPECT_FLOAT_EQ(model().DomainHeight, 1000.5F * static_cast<float>(canvas.height()) /
                                            static_cast<float>(canvas.width()));
}

TEST_F(Window, ABoxTellsWhatItIsReadAsWhereThatIsNotWhatItShows) {
  const struct {
    const char *menu, *box, *text, *told;
  } rows[] = {{"mnuMaterial", "txtPoison", "0,3", "read as 0"},
              {"mnuMaterial", "txtPoison", " 3e-1 ", ""},
              {"mnuMaterial", "txtThickness", "-2.5", "read as -2.5, not above 0"},
              {"mnuAppliedLoad", "txtLoadY", "", "read as 0"},
              {"mnuAppliedLoad", "txtLoadY", "1e309", "too large"},
              {"mnuDrivingParameter", "txtDpEpsilon", "2.5", "read as 2"},
              {"mnuDrivingParameter", "txtDpEpsilon", "3.0", ""},
              {"mnuWidth", "txtUnitGrid", "12.5mm", "read as 12.5"}};
  for (const auto& [menu, name, text, told] : rows) {
    In(menu, [&](QDialog& dialog) {
      auto* box = dialog.findChild<QLineEdit*>(name);
      const QColor plain = box->palette().color(QPalette::Base);
      EXPECT_EQ(box->toolTip(), "");
      Enter(dialog, name, text);
      EXPECT_EQ(box->toolTip(), told);
      EXPECT_EQ(box->palette().color(QPalette::Base) == plain, *told == '\0') << text;
    });
  }
}

TEST_F(Window, NumbersThatCannotBeAreRefusedAndTheDialogStaysOpen) {
  const std::string tooLarge = "警告: 数値が大きすぎます。\n値を変えてください。";
  const struct {
    const char* menu;
    Entries entries;
    std::string box;  ///< its beginning
  } rows[] = {
      {"mnuAppliedLoad", {{"txtLoadX", "1"}, {"txtLoadY", "1e309"}}, tooLarge},
      {"mnuMaterial", {{"txtEmod", "1"}, {"txtThickness", "1e309"}}, tooLarge},
      {"mnuDrivingParameter", {{"txtDpStress", "5"}, {"txtDpEpsilon", "32767.5"}}, tooLarge},
      {"mnuDrivingParameter", {{"txtDpStress", "5"}, {"txtDpLambda", "-4e38"}}, tooLarge},
      {"mnuWidth", {{"txtWidth", "0"}}, "警告: 表示幅"},
      {"mnuWidth", {{"txtWidth", "1e999"}}, "警告: 表示幅"},
      {"mnuWidth", {{"txtUnitGrid", "-1"}}, "警告: 要素サイズ"},
      {"mnuWidth", {{"txtUnitGrid", "1e-50"}}, "警告: 要素サイズ"},  // 0 in single precision
      {"mnuWidth", {{"txtUnitGrid", "0.0305"}}, "警告: この表示幅と要素サイズ"}};  // 32787 lines
  const std::string before = Text();
  for (const auto& [menu, entries, box] : rows) {
    EXPECT_FALSE(Fill(menu, entries)) << menu;
    const Texts boxes = robot.Boxes();
    EXPECT_TRUE(boxes.size() == 1 && boxes[0].starts_with(box)) << box;
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(model().LoadFx, 0);
  }
  EXPECT_TRUE(Fill("mnuWidth", {{"txtWidth", "2000"}, {"txtUnitGrid", "0.0306"}}));
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
  EXPECT_NE(fail(folder.Path()).find((folder / "Rescue.model").string()), std::string::npos);
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), Text());
  EXPECT_NE(fail(folder / "none").find("could not be saved"), std::string::npos);
  temporary.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", temporary);
}

TEST_F(Window, FileListsFollowTheFolder) {
#if defined(_WIN32)
  const std::string odd = "x、z😀.model";  // a name is UTF-16 there
#else
  const std::string odd = "x\nz\xFF\xC3.model";
#endif
  std::filesystem::create_directories(folder / "sub" / "deep.model");
  for (const std::string& name :
       Texts{"b.model", "A.model", odd, "c.txt", ".hidden.model", "D.MODEL", "sub/inner.model"}) {
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
    const QPoint row = files.visualItemRect(files.item(1)).center();
    for (const char* before : {"", "typed"}) {  // also a second click on the same row
      name.setText(before);
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
    Enter(dialog, "txtFileName", "sub/../plate");  // used as typed, without a suffix
    QTest::keyClick(dialog.findChild<QLineEdit*>("txtFileName"), Qt::Key_Return);
  }));
  EXPECT_EQ(model().ModelFilePath, (std::filesystem::current_path() / "sub/../plate").string());
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
  EXPECT_TRUE(Fill("mnuSave", {{"txtFileName", "again"}}, "cmdSave"));
  EXPECT_EQ(ReadFile(folder / "again"), saved);
  const std::filesystem::path far = folder / "sub/far.model";
  EXPECT_TRUE(Fill("mnuSave", {{"txtFileName", far.string()}}, "cmdSave"));
  EXPECT_EQ(ReadFile(far), saved);
  EXPECT_FALSE(Fill("mnuOpen", {{"txtFileName", "/none/near.model"}}, "cmdOpen"));
  EXPECT_FALSE(Fill("mnuSave", {{"txtFileName", "/none/near.model"}}, "cmdSave"));
  EXPECT_TRUE(In("mnuOpen", [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QTreeWidget*>("Dir1")->currentItem()->text(0), "sub");
    Enter(dialog, "txtFileName", "far.model");
    Click(dialog, "cmdOpen");
  })) << "starts in the folder of the last file";
}

}  // namespace
}  // namespace quillane::test
