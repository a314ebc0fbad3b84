// Presses on the canvas, mode by mode: what they change, what they refuse, what they say.
#include <QTest>

#include "ui/window.h"

namespace quillane::test {
namespace {

const std::string kOutsideElement = "警告: 選ばれた要素は設計領域にありません。";
const std::string kOutsideNode = "警告: 選ばれた節点は設計領域にありません。";
using Texts = std::vector<std::string>;

/// A 5 x 7 domain, lower left corner at (-400, -300), set up through the window's own means.
class Editing : public Window {
 protected:
  Editing() {
    ChooseIn("mnuShape", "optDesignDomain");
    Press(-449, -260);
    Press(251, 240);
  }
};

TEST_F(Editing, TwoPressesSetUpTheDomainWhicheverCornerComesFirst) {
  const auto check = [this] {
    EXPECT_EQ(model().DomainX1, -400);
    EXPECT_EQ(model().DomainX2, 300);
    EXPECT_EQ(model().DomainY1, -300);
    EXPECT_EQ(model().DomainY2, 200);
    EXPECT_EQ(model().CellRowCount, 5);
    EXPECT_EQ(model().CellColumnCount, 7);
    EXPECT_EQ(model().ElementCount, 35);
    EXPECT_EQ(model().NodeCount, 48);
    EXPECT_EQ(model().NodeXY(9, 1), -400);
    EXPECT_EQ(model().NodeXY(9, 2), -200);
    EXPECT_EQ(model().ElementNodes(1, 3), 10);
    EXPECT_EQ(model().DomainDefined, kTrue);
    EXPECT_EQ(model().EditMode, 0);
  };
  check();
  model().NodeLoad(3, 1) = 5;
  model().CellState(1, 1) = kCellDesign;
  ChooseIn("mnuShape", "optDesignDomain");
  Press(251, 240, Qt::RightButton);
  EXPECT_EQ(model().ClickCount, 1);
  EXPECT_EQ(model().NodeLoad(3, 1), 5) << "the first press leaves the model's contents alone";
  Press(-449, -260);
  check();
  EXPECT_EQ(model().NodeLoad(3, 1), 0);
  EXPECT_EQ(model().CellState(1, 1), kCellEmpty);
}

TEST_F(Editing, AGridThatCannotBeIsRefusedAndTheOldModelStays) {
  const std::string before = Text();
  const auto refused = [&](const char* why, Single size, double x, double y) {
    SCOPED_TRACE(why);
    model().ElementSize = size;
    ChooseIn("mnuShape", "optDesignDomain");
    Press(-500, -500);
    Press(x, y);
    EXPECT_EQ(robot.Boxes().size(), 1U);
    EXPECT_EQ(model().ClickCount, 0);
    EXPECT_EQ(model().EditMode, 1);
    model().ElementSize = 100;
    EXPECT_EQ(Text(), before);
  };
  refused("no column", 100, -520, 500);
  refused("no row", 100, 500, -480);
  refused("more nodes than an Integer counts", 5, 900, 500);
  refused("more columns than an Integer counts", 0.04F, 900, 500);
  Press(-500, -500);
  Press(-300, -300);
  EXPECT_EQ(model().ElementCount, 4) << "the next press is a first one again";
}

TEST_F(Editing, RectanglesOfCellsTakeTheirState) {
  const auto edit = [this](const char* option, double x1, double y1, double x2, double y2) {
    ChooseIn("mnuShape", option);
    Press(x1, y1);
    EXPECT_EQ(model().ClickCount, 1);
    Press(x2, y2);
    EXPECT_EQ(model().ClickCount, 0);
  };
  const auto cells = [this] {
    std::string text;
    for (int i = 5; i >= 1; --i) {
      for (int j = 1; j <= 7; ++j) {
        text += model().CellState(i, j) < 0 ? "x" : std::to_string(model().CellState(i, j));
      }
      text += "/";
    }
    return text;
  };
  edit("optAddElements", 250, 150, -350, -250);
  edit("optAddNonDesignElements", -350, -50, -250, 150);
  edit("optDeleteDesignDomain", 150, -250, 150, -250);
  edit("optRemoveElements", -150, 50, 50, 50);
  EXPECT_EQ(cells(), "2211111/2200011/2211111/1111111/11111x1/");
  edit("optAddElements", 150, -250, -350, -250);
  EXPECT_EQ(cells(), "2211111/2200011/2211111/1111111/1111111/");
  auto* canvas = Find<QWidget>("picCanvas");
  ChooseIn("mnuShape", "optRemoveElements");
  Press(50, -50);
  QTest::mouseDClick(canvas, Qt::LeftButton, {}, canvas->rect().center() + QPoint(9, 9));
  EXPECT_EQ(cells(), "2211111/2200011/2211011/1111111/1111111/")
      << "a quick pair of presses empties one cell";
}

TEST_F(Editing, APressOutsideIsRefusedAndTheFirstCornerKept) {
  ChooseIn("mnuShape", "optAddElements");
  main->picCanvas_MouseDown(1, 0, 300, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideElement}) << "the right edge does not belong to a cell";
  EXPECT_EQ(model().ClickCount, 0);
  main->picCanvas_MouseDown(1, 0, -400, -300);
  main->picCanvas_MouseDown(2, 4, -400.1F, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideElement});
  EXPECT_EQ(model().ClickCount, 1);
  main->picCanvas_MouseDown(4, 1, -301, -300);
  EXPECT_EQ(model().CellState(1, 1), kCellDesign);
  EXPECT_EQ(model().CellState(1, 2), kCellEmpty);

  Press(-350, -250);
  Show(Plate(1, 1));
  model().EditMode = 2;
  model().ClickCount = 1;
  model().ElementSize = 20;
  Press(50, 50);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideElement}) << "a cell that the mesh does not have";
}

TEST_F(Editing, SupportsAndLoadsGoToTheNearestNode) {
  const auto flags = [this](int node) {
    return 10 * model().NodeFreedom(node, 1) + model().NodeFreedom(node, 2);
  };
  const std::pair<const char*, int> kinds[] = {
      {"optFixX", 10}, {"optFixY", 1}, {"optFixXY", 11}, {"optFree", 0}};
  for (const auto& [option, expected] : kinds) {
    ChooseIn("mnuFreedom", option);
    main->picCanvas_MouseDown(1, 0, 249, 151);
    EXPECT_EQ(flags(47), expected) << option;
  }
  main->picCanvas_MouseDown(1, 0, 351, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideNode});

  const auto load = [this](const char* option, const char* x, const char* y) {
    robot.Next([=](QDialog& dialog) {
      Choose(dialog, option);
      Type(dialog, "txtLoadX", x);
      Type(dialog, "txtLoadY", y);
      Click(dialog, "cmdOK");
    });
    Menu("mnuAppliedLoad");
  };
  load("optLoadOn", "10", "-5");
  main->picCanvas_MouseDown(1, 0, 250, 150);
  EXPECT_EQ(model().NodeLoad(48, 1), 10) << "halves go up and right";
  EXPECT_EQ(model().NodeLoad(48, 2), -5);
  load("optLoadOff", "7", "8");
  EXPECT_EQ(Label("lblUpDate"), "x方向荷重成分 = 7N   y方向荷重成分 = 8N");
  Press(300, 200);
  EXPECT_EQ(model().NodeLoad(48, 1), 10) << "no mode, no load";
  load("optLoadOn", "0", "0");
  Press(300, 200);
  EXPECT_EQ(model().NodeLoad(48, 2), 0);
  model().ClickCount = 1;
  Press(-600, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideNode});
  EXPECT_EQ(model().ClickCount, 0);
}

TEST_F(Editing, TheOriginMovesToThePressUntilAResize) {
  Menu("mnuMoveOrigin");
  const Single height = model().DomainHeight;
  main->picCanvas_MouseDown(1, 0, 500, 200);
  EXPECT_EQ(model().ViewRight, 500);
  EXPECT_FLOAT_EQ(model().ViewTop, height / 2 - 200);
  EXPECT_EQ(model().EditMode, 9);
  main->picCanvas_MouseDown(1, 0, 0, 0);
  EXPECT_EQ(model().ViewRight, 500);
  EXPECT_EQ(model().DomainX1, -400);
  main->resize(800, 600);
  QCoreApplication::processEvents();
  EXPECT_EQ(model().ViewRight, 1000);
  EXPECT_FLOAT_EQ(model().ViewTop, model().DomainHeight / 2);
}

TEST_F(Editing, ReadOutsTellTheirNumberWithTheCellsOffset) {
  model().NodeLoad(47, 2) = -2.5;
  model().NodeDisp(47, 1) = 0.125;
  model().CellStress(3, 2) = 42.5;
  model().Potential(3, 2) = 7.5;
  const auto read = [this](const char* option, double x, double y) {
    ChooseIn("mnuValueIndicator", option);
    Press(x, y);
    return Label("lblUpDate");
  };
  EXPECT_EQ(read("optLoadValue", 210, 190), "Px = 0N  Py = -2.5N");
  EXPECT_EQ(read("optDisplacementValue", 210, 190), "u = 0.125mm  v = 0mm");
  EXPECT_EQ(read("optStressValue", -150, 50), "3,2   stress = 42.5MPa");
  EXPECT_EQ(read("optNeuronValue", -150, 50), "3,2   Potential = 7.5");
  EXPECT_EQ(read("optStressValue", -350, -250), "0,0   stress = 0MPa");
  read("optStressValue", 450, 0);
  read("optDisplacementValue", 450, 0);
  EXPECT_EQ(robot.Boxes(), (Texts{kOutsideElement, kOutsideNode}));

  const std::string before = Text();
  EXPECT_EQ(ended, -1);
  read("optNeuronValue", -350, 50);
  EXPECT_EQ(ended, 1) << "the potential of the leftmost column has no cell to its left";
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), before);
  EXPECT_NE(robot.Boxes().at(0).find("Rescue.model"), std::string::npos);
}

TEST_F(Editing, WithoutAModeAPressDoesNothingAndMovesAreStillRead) {
  const std::string before = Text();
  for (const Integer mode : {Integer{0}, Integer{10}, Integer{-3}}) {
    model().EditMode = mode;
    Press(0, 0);
  }
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(robot.Boxes().empty());
  main->picCanvas_MouseMove(0, 0, -350.2F, 119.6F);
  EXPECT_EQ(Label("lblMouseXY"), "x = -350mm  y = 120mm");
  main->picCanvas_MouseMove(0, 0, 2.5F, -0.2F);
  EXPECT_EQ(Label("lblMouseXY"), "x = 3mm  y = 0mm");
  auto* canvas = Find<QWidget>("picCanvas");
  QTest::mouseMove(canvas, QPoint(0, canvas->height() / 2));
  EXPECT_EQ(Label("lblMouseXY"), "x = -1000mm  y = 0mm");
}

}  // namespace
}  // namespace quillane::test
