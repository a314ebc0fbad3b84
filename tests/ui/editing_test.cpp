// Presses on the canvas, mode by mode: what they change, what they refuse, what they say.
#include <array>

#include "ui/window.h"

namespace quillane::test {
namespace {

const std::string kOutsideElement = "警告: 選ばれた要素は設計領域にありません。";
const std::string kOutsideNode = "警告: 選ばれた節点は設計領域にありません。";

/// A 5 x 7 domain, lower left corner at (-400, -300), set up by presses in the window.
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
    const Model& m = model();
    EXPECT_EQ((std::array{m.DomainX1, m.DomainY1, m.DomainX2, m.DomainY2}),
              (std::array<Single, 4>{-400, -300, 300, 200}));
    EXPECT_EQ((std::array{m.CellRowCount, m.CellColumnCount, m.DomainDefined, m.EditMode}),
              (std::array<Integer, 4>{5, 7, kTrue, 0}));
    EXPECT_EQ(m.NodeXY(9, 2), -200);
  };
  check();
  model().NodeLoad(3, 1) = 5;
  model().CellState(1, 1) = kCellDesign;
  ChooseIn("mnuShape", "optDesignDomain");
  Press(251, 240, Qt::RightButton);
  EXPECT_EQ(model().ClickCount, 1);
  EXPECT_EQ(model().NodeLoad(3, 1), 5) << "the first press does not change the model";
  Press(-449, -260);
  check();
  EXPECT_EQ(model().NodeLoad(3, 1), 0);
  EXPECT_EQ(model().CellState(1, 1), kCellEmpty);
}

TEST_F(Editing, RectanglesOfCellsTakeTheirState) {
  const auto edit = [this](const char* option, double x1, double y1, double x2, double y2) {
    ChooseIn("mnuShape", option);
    Press(x1, y1);
    PressAt(300, 0);
    EXPECT_EQ(robot.Boxes(), Texts{kOutsideElement}) << "the right edge belongs to no cell";
    EXPECT_EQ(model().ClickCount, 1) << "the first corner stays";
    Press(x2, y2);
    EXPECT_EQ(model().ClickCount, 0);
  };
  const auto cells = [this] {
    std::string text;
    for (int i = 5; i >= 1; --i, text += "/") {
      for (int j = 1; j <= 7; ++j) text += "xxx012"[model().CellState(i, j) + 3];
    }
    return text;
  };
  edit("optAddElements", 250, 150, -350, -250);
  edit("optAddNonDesignElements", -350, -50, -250, 150);
  edit("optDeleteDesignDomain", 150, -250, 150, -250);
  edit("optRemoveElements", -150, 50, 50, 50);
  EXPECT_EQ(cells(), "2211111/2200011/2211111/1111111/11111x1/");
  ChooseIn("mnuShape", "optRemoveElements");
  Press(50, -50);
  QTest::mouseDClick(Canvas(), Qt::LeftButton, {}, Canvas()->rect().center() + QPoint(9, 9));
  EXPECT_EQ(cells(), "2211111/2200011/2211011/1111111/11111x1/")
      << "a double click empties one cell";
  ChooseIn("mnuShape", "optRemoveElements");
  Press(50, -50);
  ChooseIn("mnuShape", "optAddElements");
  EXPECT_EQ(model().ClickCount, 0) << "OK drops a half-made rectangle";
}

TEST_F(Editing, SupportsAndLoadsGoToTheNearestNode) {
  const std::pair<const char*, int> kinds[] = {
      {"optFixX", 10}, {"optFixY", 1}, {"optFixXY", 11}, {"optFree", 0}};
  for (const auto& [option, flags] : kinds) {
    ChooseIn("mnuFreedom", option);
    PressAt(249, 151);
    EXPECT_EQ(10 * model().NodeFreedom(47, 1) + model().NodeFreedom(47, 2), flags) << option;
  }
  PressAt(351, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideNode});

  const auto load = [this](const char* option, const char* x, const char* y) {
    Fill("mnuAppliedLoad", {{option, ""}, {"txtLoadX", x}, {"txtLoadY", y}});
    PressAt(250, 150);  // ties round up and to the right
    return std::pair{model().NodeLoad(48, 1), model().NodeLoad(48, 2)};
  };
  EXPECT_EQ(load("optLoadOn", "10", "-5"), (std::pair{10.0, -5.0}));
  EXPECT_EQ(load("optLoadOff", "7", "8"), (std::pair{10.0, -5.0})) << "no mode, no load";
  EXPECT_EQ(load("optLoadOn", "0", "0"), (std::pair{0.0, 0.0}));
  Press(-600, 0);
  EXPECT_EQ(robot.Boxes(), Texts{kOutsideNode});
}

TEST_F(Editing, TheOriginMovesToThePressUntilAResize) {
  Menu("mnuMoveOrigin");
  const QImage before = Picture();
  PressAt(500, 200);
  const QImage moved = Picture();
  EXPECT_NE(moved, before);
  main->View().ShowModel();
  EXPECT_EQ(Picture(), moved);
  EXPECT_EQ(model().EditMode, kModeOrigin);
  EXPECT_EQ(Label("lblMouseXY"), "x = 0mm  y = 0mm");
  PressAt(0, 0);  // on the new origin
  EXPECT_EQ(model().ViewRight, 500);
  EXPECT_FLOAT_EQ(model().ViewTop, model().DomainHeight / 2 - 200);
  main->resize(800, 600);
  QCoreApplication::processEvents();
  EXPECT_EQ(model().ViewRight, 1000);
  EXPECT_FLOAT_EQ(model().ViewTop, model().DomainHeight / 2);
}

TEST_F(Editing, ReadOutsAndMovesAreToldAndWithoutAModeAPressDoesNothing) {
  const std::string before = Text();
  for (const Integer mode : {kModeNothing, Integer{10}, Integer{-3}}) {
    model().EditMode = mode;
    Press(0, 0);
  }
  EXPECT_EQ(Text(), before);
  EXPECT_TRUE(robot.Boxes().empty());
  emit Canvas()->MouseMove(0, 0, -350.2F, 119.6F);
  EXPECT_EQ(Label("lblMouseXY"), "x = -350mm  y = 120mm");
  QTest::mouseMove(Canvas(), QPoint(0, Canvas()->height() / 2));
  EXPECT_EQ(Label("lblMouseXY"), "x = -1000mm  y = 0mm");

  const auto read = [this](const char* option, double x, double y) {
    ChooseIn("mnuValueIndicator", option);
    Press(x, y);
    return Label("lblUpDate");
  };
  EXPECT_EQ(read("optLoadValue", 210, 190), "Px = 0N  Py = 0N");
  EXPECT_EQ(read("optDisplacementValue", 210, 190), "u = 0mm  v = 0mm");
  EXPECT_EQ(read("optStressValue", -150, 50), "3,2   stress = 0MPa");
  EXPECT_EQ(read("optNeuronValue", -150, 50), "3,2   Potential = 0");
  read("optStressValue", 450, 0);
  read("optDisplacementValue", 450, 0);
  EXPECT_EQ(robot.Boxes(), (Texts{kOutsideElement, kOutsideNode}));
  EXPECT_EQ(ended, -1);
  read("optNeuronValue", -350, 50);
  EXPECT_EQ(ended, 1) << "the potential of the leftmost column has no cell to its left";
  EXPECT_EQ(ReadFile(folder / "Rescue.model"), before);
  EXPECT_NE(robot.Boxes().at(0).find("Rescue.model"), std::string::npos);
}

}  // namespace
}  // namespace quillane::test
