// The dialogs as a user works them: what they show, store, refuse and leave behind.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <memory>
#include <optional>

#include "model/model_file.h"
#include "support/plates.h"
#include "ui/file_name.h"
#include "ui/frmAppliedLoad.h"
#include "ui/frmController.h"
#include "ui/frmFreedom.h"
#include "ui/frmImageIndicator.h"
#include "ui/frmMain.h"
#include "ui/frmMaterial.h"
#include "ui/frmOpen.h"
#include "ui/frmOptimization.h"
#include "ui/frmSave.h"
#include "ui/frmShape.h"
#include "ui/frmValueIndicator.h"
#include "ui/frmWidth.h"

namespace quillane {
namespace {

using test::ScratchFolder;

constexpr const char* kDomainFirst = "\r\n設計領域をはじめに入力してください。";
constexpr const char* kFileFailure =
    "ファイルを開くときにエラーが発生しました。\r\nファイルを選んでください。";

/// Runs every test in a folder of its own, with a shown main window.
class Dialogs : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::current_path(folder_.Path());
    main_ = std::make_unique<frmMain>();
    main_->show();
  }
  void TearDown() override {
    dialog_.reset();
    main_.reset();
    std::filesystem::current_path("/");
  }

  /// A dialog, loaded and shown without waiting for it.
  template <class Dialog>
  QDialog& Load() {
    dialog_ = std::make_unique<Dialog>(*main_);
    dialog_->show();
    return *dialog_;
  }

  template <class Control>
  Control& Find(const char* name) {
    auto* control = dialog_->findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return *control;
  }
  void Type(const char* box, const char* text) {
    Find<QLineEdit>(box).setText(QString::fromUtf8(text));
  }
  void Click(const char* button) { Find<QPushButton>(button).click(); }
  void Choose(const char* option) { Find<QRadioButton>(option).setChecked(true); }
  void Press(QWidget& control, Qt::Key key) { QTest::keyClick(&control, key); }

  Model& TheModel() { return main_->model(); }
  std::string Status() { return main_->findChild<QLabel*>("lblUpDate")->text().toStdString(); }
  bool IsOpen() { return dialog_->isVisible(); }

  struct Box {
    std::string title, text, reason;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
  };
  /// Runs the action and answers the message box that it shows.
  std::optional<Box> BoxOf(const std::function<void()>& action) {
    std::optional<Box> seen;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&seen] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      seen = Box{box->windowTitle().toStdString(), box->text().toStdString(),
                 box->informativeText().toStdString(), box->icon()};
      box->accept();
    });
    answer.start(1);
    action();
    return seen;
  }
  void ExpectBox(const std::optional<Box>& box, const char* title, const std::string& text) {
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->title, title);
    EXPECT_EQ(box->icon, QMessageBox::Warning);
    EXPECT_EQ(box->text.substr(0, text.size()), text);
  }
  void ExpectFileFailure(const std::optional<Box>& box) {
    ExpectBox(box, "データ読込", kFileFailure);
    EXPECT_TRUE(box && box->reason != "");
    EXPECT_TRUE(IsOpen());
  }
  /// Loads a dialog and compares all its texts, in any order.
  template <class DialogClass>
  void ExpectTexts(const char* title, const char* focused, QStringList texts) {
    Load<DialogClass>();
    EXPECT_EQ(dialog_->windowTitle().toStdString(), title);
    EXPECT_EQ(dialog_->focusWidget()->objectName().toStdString(), focused);
    for (const QWidget* child : dialog_->findChildren<QWidget*>()) {
      const QString shown = child->property("text").toString();
      if (child->metaObject()->indexOfProperty("text") < 0) continue;
      EXPECT_TRUE(texts.removeOne(shown)) << title << ": " << shown.toStdString();
    }
    EXPECT_TRUE(texts.isEmpty()) << title << ": " << texts.join("|").toStdString();
  }
  /// Loads each dialog, fills it in and presses Escape.
  template <class... DialogClasses>
  void ExpectModeAfterLeaving(Integer mode) {
    const auto leave = [&](QDialog& dialog) {
      for (auto* box : dialog.findChildren<QLineEdit*>()) box->setText("77");
      for (auto* option : dialog.findChildren<QRadioButton*>()) option->setChecked(true);
      Press(dialog, Qt::Key_Escape);
      EXPECT_FALSE(IsOpen());
      EXPECT_EQ(TheModel().EditMode, mode) << dialog.objectName().toStdString();
    };
    ((TheModel().EditMode = 6, leave(Load<DialogClasses>())), ...);
  }

  ScratchFolder folder_;
  std::unique_ptr<frmMain> main_;
  std::unique_ptr<QDialog> dialog_;
};

TEST_F(Dialogs, ShowTheirTexts) {
  ExpectTexts<frmShape>(
      "Shape", "optDoNot",
      {"Choose what you want to draw.", "Setup Design Domain", "Add Design Structural Elements",
       "Delete Structural Elements", "Add Non-Design Structural Elements", "Delete Design Domain",
       "Nothing", "OK", "Cancel"});
  ExpectTexts<frmFreedom>(
      "Freedom Conditions", "optFree",
      {"Choose individual node settings.", "X-Displacement Fixed", "Y-Displacement Fixed",
       "All Displacement Fixed", "Nothing", "OK", "Cancel"});
  ExpectTexts<frmAppliedLoad>(
      "Applied Load", "txtLoadX",
      {"Specify the applied loads", "Nothing", "Force-X: ", "0", "Force-Y: ", "0", "OK", "Cancel"});
  ExpectTexts<frmWidth>("Width and Mesh Density", "txtWidth",
                        {"Enter display area Width in mm units.", "2000", "mm",
                         "Enter element-Size in mm units.", "100", "mm", "OK", "Cancel"});
  ExpectTexts<frmMaterial>(
      "Design Property", "txtEmod",
      {"Specify Design Property Values", "Modulus of Elasticity: ", "210000", "MPa",
       "Thickness: ", "1", "mm", "Poissons Ratio: ", "0.3", "OK", "Cancel"});
  ExpectTexts<frmController>("Optimization Parameter", "txtDpStress",
                             {"Specify a target value of stress", "von Mises Stress:", "0",
                              "Specify threshold value Epsilon", "Epsilon:", "1",
                              "and forget coefficient Lambda.", "Lambda:", "0.05", "OK", "Cancel"});
  ExpectTexts<frmImageIndicator>(
      "Graphics", "optStressValue",
      {"Choose what you want to show.", "von Mises Stress", "Potential", "OK", "Cancel"});
  ExpectTexts<frmValueIndicator>(
      "Values", "optDoNot",
      {"Choose what you want to check.", "Applied Load value", "Displacement value",
       "von Mises Stress value", "Potential value", "Nothing", "OK", "Cancel"});
  ExpectTexts<frmOptimization>("Optimization", "cmdAutoStart",
                               {"Automatic_Start", "Automatic_Stop", "Bit by Bit", "Cancel",
                                "The solver did not converge in the last step."});
  ExpectTexts<frmOpen>("Open Model", "txtFileName", {"", "Open", "Cancel"});
  ExpectTexts<frmSave>("Save Model", "txtFileName", {"", "Save", "Cancel"});
}

TEST_F(Dialogs, LeavingThemStoresNothing) {
  TheModel().DomainDefined = kTrue;
  ExpectModeAfterLeaving<frmFreedom, frmAppliedLoad, frmWidth, frmMaterial, frmController>(0);
  ExpectModeAfterLeaving<frmShape, frmValueIndicator, frmImageIndicator, frmOpen, frmSave>(6);
  const Model untouched;
  EXPECT_EQ(TheModel().LoadFx, untouched.LoadFx);
  EXPECT_EQ(TheModel().DomainWidth, untouched.DomainWidth);
  EXPECT_EQ(TheModel().Thickness, untouched.Thickness);
  EXPECT_EQ(TheModel().Lambda, untouched.Lambda);
  EXPECT_EQ(TheModel().DisplayMode, untouched.DisplayMode);
}

TEST_F(Dialogs, OptionsSetTheEditMode) {
  struct Row {
    std::function<void()> load;
    const char* option;
    Integer mode;
    bool needsDomain;
  };
  const auto shape = [this] { Load<frmShape>(); };
  const auto freedom = [this] { Load<frmFreedom>(); };
  const auto values = [this] { Load<frmValueIndicator>(); };
  const Row rows[] = {{shape, "optDesignDomain", 1, false},
                      {shape, "optAddElements", 2, true},
                      {shape, "optRemoveElements", -2, true},
                      {shape, "optAddNonDesignElements", 3, true},
                      {shape, "optDeleteDesignDomain", -1, true},
                      {shape, "optDoNot", 0, false},
                      {freedom, "optFixX", 11, true},
                      {freedom, "optFixY", 12, true},
                      {freedom, "optFixXY", 13, true},
                      {freedom, "optFree", 14, true},
                      {[this] { Load<frmAppliedLoad>(); }, "optLoadOn", 4, true},
                      {[this] { Load<frmAppliedLoad>(); }, "optLoadOff", 0, false},
                      {values, "optDisplacementValue", 5, false},
                      {values, "optStressValue", 6, false},
                      {values, "optNeuronValue", 7, false},
                      {values, "optLoadValue", 8, false},
                      {values, "optDoNot", 9, false}};
  for (const Row& row : rows) {
    for (const Integer defined : {Integer{0}, kTrue}) {
      SCOPED_TRACE(row.option);
      TheModel().DomainDefined = defined;
      TheModel().EditMode = 9;
      row.load();
      const Integer modeLoaded = TheModel().EditMode;
      Choose(row.option);
      const auto box = BoxOf([this] { Click("cmdOK"); });
      EXPECT_FALSE(IsOpen());
      if (row.needsDomain && defined == 0) {
        ExpectBox(box, "警告", kDomainFirst);
        EXPECT_EQ(TheModel().EditMode, modeLoaded);
      } else {
        EXPECT_FALSE(box.has_value());
        EXPECT_EQ(TheModel().EditMode, row.mode);
      }
    }
  }
}

TEST_F(Dialogs, ShapeAbandonsAHalfMadeRectangleOnlyByOK) {
  TheModel().ClickCount = 1;
  Load<frmShape>();
  Click("cmdCancel");
  EXPECT_EQ(TheModel().ClickCount, 1);
  Load<frmShape>();
  Press(*dialog_, Qt::Key_Return);
  EXPECT_EQ(TheModel().ClickCount, 0);
}

TEST_F(Dialogs, ParametersAreReadFromOddTexts) {
  struct Row {
    const char *stress, *epsilon, *lambda, *status;
  };
  const Row rows[] = {
      {"120", "3", "0.05", "Stress Target = 120MPa   Epsilon = 3   Lambda = 0.05"},
      {" 1e2x", "2.5", "0.1x", "Stress Target = 100MPa   Epsilon = 2   Lambda = 0.1"},
      {"-.5.5", "3.5", ".25", "Stress Target = -0.5MPa   Epsilon = 4   Lambda = 0.25"},
      {"", "abc", "1,5", "Stress Target = 0MPa   Epsilon = 0   Lambda = 1"}};
  for (const Row& row : rows) {
    Load<frmController>();
    Type("txtDpStress", row.stress);
    Type("txtDpEpsilon", row.epsilon);
    Type("txtDpLambda", row.lambda);
    Click("cmdOK");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Status(), row.status);
  }
  EXPECT_EQ(TheModel().Lambda, 1.0F);
}

TEST_F(Dialogs, MaterialAndForceGoToModelAndStatus) {
  Load<frmMaterial>();
  Click("cmdOK");
  EXPECT_EQ(Status(), "ヤング率 = 210000MPa  板厚 = 1mm  ポアソン比 = 0.3");
  Load<frmMaterial>();
  Type("txtEmod", "7e4");
  Type("txtThickness", "-2.5mm");
  Type("txtPoison", "nu");
  Click("cmdOK");
  EXPECT_EQ(TheModel().YoungModulus, 70000);
  EXPECT_EQ(TheModel().Thickness, -2.5);
  EXPECT_EQ(TheModel().PoissonRatio, 0);

  Load<frmAppliedLoad>();
  Type("txtLoadX", "10");
  Type("txtLoadY", "-5 N");
  Click("cmdOK");
  EXPECT_EQ(Status(), "x方向荷重成分 = 10N   y方向荷重成分 = -5N");
  EXPECT_EQ(TheModel().LoadFy, -5);
  Load<frmAppliedLoad>();
  EXPECT_EQ(Find<QLineEdit>("txtLoadX").selectedText(), "10");
  EXPECT_TRUE(Find<QRadioButton>("optLoadOff").isChecked());
}

TEST_F(Dialogs, AnOverflowIsFatalAfterWhatCameBeforeIt) {
  int status = -1;
  QObject::connect(main_.get(), &frmMain::ProgramEnds, [&status](int exit) { status = exit; });
  Load<frmController>();
  Type("txtDpStress", "5");
  Type("txtDpEpsilon", "32767.5");
  Type("txtDpLambda", "0.5");
  EXPECT_TRUE(BoxOf([this] { Click("cmdOK"); }).has_value());
  EXPECT_EQ(status, 1);
  EXPECT_EQ(TheModel().StressTarget, 5);
  EXPECT_EQ(TheModel().Epsilon, 1);
  EXPECT_EQ(TheModel().Lambda, 0.05F);
  EXPECT_TRUE(std::filesystem::exists("Rescue.model"));
}

TEST_F(Dialogs, WidthSetsTheViewUpAnew) {
  TheModel().ViewRight = 12;
  Load<frmWidth>();
  Type("txtWidth", "1000.5");
  Type("txtUnitGrid", "12.5");
  Click("cmdOK");
  EXPECT_EQ(Status(), "Width = 1000.5mm  Element Size = 12.5mm");
  EXPECT_EQ(TheModel().ViewRight, 500.25F);
  const QSize canvas = main_->CanvasSize();
  EXPECT_FLOAT_EQ(TheModel().DomainHeight, 1000.5F * static_cast<float>(canvas.height()) /
                                               static_cast<float>(canvas.width()));
}

TEST_F(Dialogs, WidthRefusesWhatCannotBeDrawn) {
  struct Row {
    const char *width, *elementSize, *text, *reason;
  };
  const Row rows[] = {{"0", "100", "表示幅", "zero width"},
                      {"-2000", "100", "表示幅", "negative width"},
                      {"2000", "none", "要素サイズ", "no number"},
                      {"2000", "-1", "要素サイズ", "negative size"},
                      {"2000", "1e-50", "要素サイズ", "a size that is 0 in single precision"},
                      {"2000", "0.0305", "この表示幅と要素サイズ", "32787 lines to the right edge"},
                      {"1e39", "1e38", "表示幅", "no Single"},
                      {"1e999", "100", "表示幅", "no Double"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.reason);
    Load<frmWidth>();
    Type("txtWidth", row.width);
    Type("txtUnitGrid", row.elementSize);
    ExpectBox(BoxOf([this] { Click("cmdOK"); }), "警告", row.text);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(TheModel().DomainWidth, 2000);
    EXPECT_EQ(TheModel().ElementSize, 100);
  }
  Type("txtWidth", "2000");
  Type("txtUnitGrid", "0.0306");
  Click("cmdOK");
  EXPECT_FALSE(IsOpen());
}

TEST_F(Dialogs, GraphicsSwitchTheMapAlsoWithoutResults) {
  Load<frmImageIndicator>();
  Choose("optNeuronValue");
  Click("cmdOK");
  EXPECT_EQ(TheModel().DisplayMode, 2);
  Load<frmImageIndicator>();
  EXPECT_TRUE(Find<QRadioButton>("optNeuronValue").isChecked());
  Choose("optStressValue");
  Click("cmdOK");
  EXPECT_EQ(TheModel().DisplayMode, 1);
  EXPECT_FALSE(main_->HasEnded());
}

TEST_F(Dialogs, OptimizationRunsStopsAndTellsOfAStepThatDidNotConverge) {
  TheModel() = test::Cantilever(4, 6);
  main_->findChild<QAction*>("mnuStressAnalysis")->trigger();
  Load<frmOptimization>();
  auto& notice = Find<QLabel>("lblConvergence");
  const QSize size = dialog_->size();
  Click("cmdManual");
  EXPECT_TRUE(notice.isHidden());
  EXPECT_EQ(TheModel().StepCount, 1);
  EXPECT_EQ(TheModel().AutoOptimize, kTrue);
  EXPECT_FALSE(main_->tmrOpt->isActive());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);

  Click("cmdAutoStart");
  Click("cmdAutoStart");
  EXPECT_TRUE(QTest::qWaitFor([this] { return TheModel().StepCount > 5; }));
  Click("cmdAutoStop");
  EXPECT_FALSE(main_->tmrOpt->isActive());
  EXPECT_EQ(TheModel().AutoOptimize, 0);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(IsOpen());

  TheModel().NodeFreedom.ReDim({0, TheModel().NodeCount}, {1, 2});  // nothing holds the plate
  Click("cmdManual");
  EXPECT_FALSE(main_->LastSolve().converged);
  EXPECT_FALSE(notice.isHidden());
  EXPECT_EQ(dialog_->size(), size);
  Click("cmdAutoStart");
  dialog_->close();
  EXPECT_FALSE(main_->tmrOpt->isActive());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Dialogs, FileListsFollowTheFolder) {
  for (const char* name : {"b.model", "A.model", "c.txt", ".hidden.model", "D.MODEL"}) {
    test::WriteFile(folder_ / name, "");
  }
  const std::string odd = "x\nz\xFF\xC3.model";
  test::WriteFile(folder_ / odd, "");
  std::filesystem::create_directories(folder_ / "sub" / "deep.model");
  test::WriteFile(folder_ / "sub/inner.model", "");
  Load<frmOpen>();
  auto& files = Find<QListWidget>("File1");
  auto& folders = Find<QTreeWidget>("Dir1");
  const auto names = [&files] {
    QStringList shown;
    for (int i = 0; i < files.count(); ++i) shown += files.item(i)->text();
    return shown;
  };
  EXPECT_EQ(names(), QStringList({"A.model", "b.model", "D.MODEL", FileNameText(odd)}));
  EXPECT_EQ(FileNameBytes(FileNameText(odd)), odd);

  auto& name = Find<QLineEdit>("txtFileName");
  const QRect row = files.visualItemRect(files.item(1));
  QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_EQ(name.text(), "b.model");
  name.setText("typed");
  QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, row.center());
  EXPECT_EQ(name.text(), "b.model");
  Press(files, Qt::Key_Up);
  EXPECT_EQ(name.text(), "A.model");

  folders.setCurrentItem(folders.findItems("sub", Qt::MatchExactly | Qt::MatchRecursive).front());
  Press(folders, Qt::Key_Return);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(names(), QStringList({"inner.model"}));
  EXPECT_EQ(name.text(), "A.model");
  auto* up = folders.findItems("..", Qt::MatchExactly | Qt::MatchRecursive).front();
  emit folders.itemDoubleClicked(up, 0);
  EXPECT_EQ(names().size(), 4);
  folders.setCurrentItem(folders.findItems("sub", Qt::MatchExactly | Qt::MatchRecursive).front());
  std::filesystem::remove_all("sub");
  ExpectBox(BoxOf([&] { Press(folders, Qt::Key_Return); }), "警告", "このフォルダ");
  EXPECT_EQ(names().size(), 4);
}

TEST_F(Dialogs, SaveAndOpenGiveTheSameFileAgain) {
  TheModel() = test::Cantilever(3, 5);
  TheModel().Lambda = 0.125F;
  std::filesystem::create_directory(folder_ / "sub");
  Load<frmSave>();
  Type("txtFileName", "sub/../plate");  // the text as typed, nothing added
  Press(Find<QLineEdit>("txtFileName"), Qt::Key_Return);
  EXPECT_FALSE(IsOpen());
  const std::string path = TheModel().ModelFilePath;
  EXPECT_EQ(path, std::filesystem::current_path().string() + "/sub/../plate");
  const std::string saved = test::ReadFile(path);
  EXPECT_EQ(saved, ModelFileText(TheModel()));

  main_->findChild<QAction*>("mnuStressAnalysis")->trigger();
  main_->findChild<QAction*>("mnuHistory")->trigger();
  EXPECT_EQ(TheModel().HistoryRecording, kTrue);
  TheModel().DomainDefined = 0;
  TheModel().Lambda = 1;
  Load<frmOpen>();
  Type("txtFileName", "plate");
  Click("cmdOpen");
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(ModelFileText(TheModel()), saved);
  EXPECT_EQ(TheModel().DomainDefined, kTrue);
  EXPECT_EQ(TheModel().HistoryRecording, 0);
  EXPECT_FALSE(main_->findChild<QAction*>("mnuOptimization")->isEnabled());
  EXPECT_FALSE(main_->findChild<QAction*>("mnuHistory")->isEnabled());
  EXPECT_EQ(main_->windowTitle(),
            "Quillane Optimization for Shape and Topology      by HARROW Lab., Calder univ.");
}

TEST_F(Dialogs, AFailureIsReportedAndTheDialogStaysOpen) {
  Model plate = test::Cantilever(3, 5);
  const std::string whole = ModelFileText(plate);
  const auto openText = [&](const std::string& text) {
    test::WriteFile(folder_ / "bad.model", text);
    Load<frmOpen>();
    auto& files = Find<QListWidget>("File1");
    files.setCurrentRow(0);
    return BoxOf([&] { emit files.itemDoubleClicked(files.item(0)); });
  };
  const QString title = main_->windowTitle();
  ExpectFileFailure(openText(whole.substr(0, whole.size() / 2)));
  EXPECT_EQ(TheModel().CellColumnCount, 5);  // what was read stays
  EXPECT_EQ(TheModel().DomainDefined, 0);
  ExpectFileFailure(openText(ModelFileText(Model{})));  // no cells

  plate.DomainWidth = 3e38F;  // read in full, but no view shows it
  plate.OriginFracX = 30;
  ExpectFileFailure(openText(ModelFileText(plate)));
  EXPECT_EQ(main_->windowTitle(), title);

  for (const char* name : {"", "no/such"}) {
    Load<frmOpen>();
    Type("txtFileName", name);
    ExpectFileFailure(BoxOf([this] { Click("cmdOpen"); }));
    Load<frmSave>();
    Type("txtFileName", name);
    ExpectFileFailure(BoxOf([this] { Click("cmdSave"); }));
  }
  Type("txtFileName", "good");
  Click("cmdSave");
  EXPECT_FALSE(IsOpen());
}

}  // namespace
}  // namespace quillane
