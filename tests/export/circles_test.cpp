// Round holes: what counts as a circle, how it is written, and the measures for a workshop.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "export/outline_file.h"
#include "export/outline_support.h"
#include "export/rounding.h"
#include "export/shape.h"

namespace quillane {
namespace {

OutlineFigures Figures(const Model& model, SmoothEdges edges = SmoothEdges::kAll) {
  return MakeOutlineFile(OutlineFormat::kSvg, model, edges).figures;
}

TEST(CutOutCircles, AreFoundInDigitizedDiscs) {
  std::mt19937 random(1);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * static_cast<double>(random() % 10001) / 10000;
  };
  int found = 0, discs = 0;
  double error = 0;
  for (; discs < 60; ++discs) {
    const double radius = between(1.6, 12), x = 20 + between(-1, 1), y = 20 + between(-1, 1);
    Model model = test::Plate(40, 40, 10);
    test::CutDisc(model, x, y, radius);
    const std::vector<Circle> circles = Figures(model).circles;
    if (circles.size() != 1) continue;
    ++found;
    EXPECT_NEAR(circles[0].radius, 10 * radius, 4);
    EXPECT_LT(Length(circles[0].centre - Point{10 * x, 10 * y}), 3);
    error += std::abs(circles[0].radius - 10 * radius) / 60;
  }
  EXPECT_GE(found, 59) << "of " << discs;
  EXPECT_LT(error, 0.1 * 10);

  Model tips = test::Plate(40, 40, 10);  // single cells at its four ends
  test::CutDisc(tips, 20.5, 20.5, 12.01);
  EXPECT_EQ(Figures(tips).circles.size(), 1U);
  const Model tip = test::Layout({".####", "..xx.", "..#x.", "###.."});
  EXPECT_EQ(Figures(tip).arcs.size(), 1U) << "a tip one cell away from other material";

  found = 0;
  for (int k = 0; k < 200; ++k) {  // cut by an edge of the domain
    const double radius = between(3, 12), x = between(-0.5, 0.9 * radius), y = 20 + between(-1, 1);
    Model model = test::Plate(40, 40, 10);
    test::CutDisc(model, k % 2 == 0 ? x : y, k % 2 == 0 ? y : 40 - x, radius);
    const std::vector<Circle> arcs = Figures(model).arcs;
    found += arcs.size() == 1 && std::abs(arcs[0].radius - 10 * radius) < 7 ? 1 : 0;
  }
  EXPECT_EQ(found, 200);
}

TEST(CutOutCircles, AreNotFoundInOtherShapes) {
  const std::pair<const char*, void (*)(Model&)> kShapes[] = {
      {"a square of four cells", [](Model& m) { test::SetCells(m, 9, 9, 12, 12, kCellCutOut); }},
      {"an ellipse", [](Model& m) { test::CutDisc(m, 12, 12, 7, 1.3); }},
      {"a ring",
       [](Model& m) {
         test::CutDisc(m, 12, 12, 8);
         test::SetCells(m, 8, 8, 17, 17, kCellDesign);
       }},
      {"a notch in the edge", [](Model& m) { test::SetCells(m, 1, 8, 2, 13, kCellCutOut); }},
      {"a chamfer in stairs",
       [](Model& m) {
         for (int i = 1; i <= 10; ++i) test::SetCells(m, i, 1, i, 11 - i, kCellCutOut);
       }},
      {"a disc of cells that a step emptied",
       [](Model& m) {
         test::CutDisc(m, 12, 12, 5);
         for (Integer& state : m.CellState.Raw()) state = state == kCellCutOut ? kCellEmpty : state;
       }},
  };
  for (const auto& [what, cut] : kShapes) {
    Model model = test::Plate(24, 24, 10);
    cut(model);
    const OutlineFigures figures = Figures(model);
    EXPECT_TRUE(figures.circles.empty() && figures.arcs.empty()) << what;
  }
}

TEST(CutOutCircles, BecomeArcsWhereTheEdgeOfTheDomainCutsThem) {
  const struct {
    double x, y, radius, part;  ///< cells; the part of the disc in the domain
  } kHoles[] = {{0, 12, 6, 0.5}, {12, 24, 7, 0.5}, {24, 24, 8, 0.25}, {0, 0, 14.83, 0.25}};
  for (const auto& [x, y, radius, part] : kHoles) {
    SCOPED_TRACE(radius);
    Model model = test::Plate(24, 24, 10);
    test::CutDisc(model, x, y, radius);
    const Shape shape = Smoothed(TraceShape(model), model, SmoothEdges::kAll);
    ASSERT_EQ(shape.circles.size(), 1U);
    const auto [centre, fitted] = shape.circles[0];
    EXPECT_NEAR(fitted, 10 * radius, 5);
    EXPECT_LT(Length(centre - Point{10 * x, 10 * y}), 1E-6) << "by symmetry";
    const double gone = part * std::numbers::pi * fitted * fitted;
    EXPECT_NEAR(Area(shape), 240 * 240 - gone, 0.01 * 240 * 240);
    const std::vector<Contour> outline = Outline(shape);
    ASSERT_EQ(outline.size(), 1U);
    EXPECT_EQ(std::ranges::count(outline[0], &shape.circles[0], &Side::arc), 1);
    EXPECT_NEAR(Length(Bounds(outline).high - Bounds(outline).low), std::hypot(240, 240), 1E-6);
    const std::string dxf = OutlineText(OutlineFormat::kDxf, shape, 1);
    const std::size_t bulge = dxf.find(" 42\n", dxf.find("AcDbPolyline"));
    ASSERT_NE(bulge, std::string::npos);
    EXPECT_NEAR(std::stod(dxf.substr(bulge + 4)), -std::tan(part * std::numbers::pi / 2), 0.1);
    EXPECT_NE(OutlineText(OutlineFormat::kSvg, shape, 1).find(" A "), std::string::npos);
  }
}

TEST(CutOutCircles, AreWrittenAsCircles) {
  Model model = test::Plate(20, 30, 10);
  test::CutDisc(model, 10, 8, 4.2);
  const Circle circle = Figures(model).circles.at(0);
  const std::string dxf = MakeOutlineFile(OutlineFormat::kDxf, model, SmoothEdges::kAll).text;
  const std::vector<double> numbers = test::Numbers(dxf, "AcDbCircle\n", 'A');
  ASSERT_GE(numbers.size(), 8U);
  EXPECT_EQ((std::vector<double>{numbers[1], numbers[3], numbers[7]}),
            (std::vector<double>{circle.centre.x, circle.centre.y, circle.radius}));
  const std::string svg = MakeOutlineFile(OutlineFormat::kSvg, model, SmoothEdges::kAll).text;
  const std::vector<double> arc = test::Numbers(svg, "A ", 'A');
  ASSERT_EQ(arc.size(), 7U) << "two halves";
  EXPECT_NEAR(arc[0], circle.radius, 1E-9);
  EXPECT_TRUE(Figures(model, SmoothEdges::kDesign).circles.empty()) << "design edges only";
}

TEST(CutOutCircles, KeepOutlineAndSolidSoundOnRandomLayouts) {
  std::size_t circles = 0, arcs = 0;
  for (unsigned seed = 1; seed <= 90 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Model model = seed % 3 == 0 ? test::RandomLayout(seed) : test::Plate(18, 24, 10);
    std::mt19937 random(seed);
    const auto below = [&random](int count) {
      return static_cast<double>(random() % 1000) / 1000 * count;
    };
    double x = 0, y = 0, before = 0;
    for (unsigned hole = 0; hole < 1 + seed % 4; ++hole) {
      const double radius = 0.6 + below(5);
      const bool close = hole % 2 == 1;  // to the hole before, so that some circles are refused
      x = close ? x + before + radius + 0.4 : below(model.CellColumnCount);
      y = close ? y : below(model.CellRowCount);
      test::CutDisc(model, x, y, before = radius);
    }
    model.CellState(1, 1) = kCellDesign;
    const Shape traced = TraceShape(model);
    Shape rounded = traced;
    std::map<int, Point> moved;
    for (const CutOutCircle& added : AddCircles(rounded, model, FindCutOutCircles(traced, model))) {
      moved.insert(added.corners.begin(), added.corners.end());
    }
    for (int corner = 1; corner < std::ssize(traced.corners); ++corner) {
      const Point home = moved.contains(corner) ? moved[corner] : traced.At(corner);
      EXPECT_EQ(Length(rounded.At(corner) - home), 0) << corner;
    }
    const Shape shape = Smoothed(traced, model, SmoothEdges::kAll);
    for (const auto& loop : traced.loops) {
      EXPECT_GT(LoopArea(shape, loop) / LoopArea(traced, loop), 0);
    }
    for (const auto& [edge, index] : shape.arcs) {
      const Circle& circle = shape.circles[static_cast<std::size_t>(index)];
      const Point from = shape.At(edge.first), to = shape.At(edge.second);
      EXPECT_NEAR(Length(to - circle.centre), circle.radius, 1E-9 * circle.radius);
      for (Point last = from; const Point& p : ArcPoints(circle, from, to, 0.1))
        EXPECT_GT(Distance(circle.centre, std::exchange(last, p), p), circle.radius - 0.1001);
    }
    test::ExpectNoneMeet(test::Segments(shape));
    test::ExpectClosedSolid(OutlineText(OutlineFormat::kStl, shape, 2.5), 2.5 * Area(shape), 0.02);
    const OutlineFigures figures = Figures(model);
    circles += figures.circles.size();
    arcs += figures.arcs.size();
  }
  EXPECT_GT(circles, 20U);
  EXPECT_GT(arcs, 20U);
}

TEST(Measures, FindTheNarrowestNeck) {
  const struct {
    const char* what;
    std::vector<std::string> rows;
    double width, shortest;  ///< cells
  } kCases[] = {
      {"a plate", {"#####", "#####", "#####"}, 3, 3},
      {"two plates on a bar", {"###...###", "#########", "###...###"}, 1, 1},
      {"sides that face each other in part", {"####..", "######", "..####"}, 2, 1},
      {"corners above each other", {"####....", "########", "....####"}, 1, 1},
      {"a frame with a broad side", {"#####", "#.###", "#.###", "#####"}, 1, 1},
      {"a neck between two corners", {"###...", "###...", "..####", "..####"}, 1, 2},
  };
  for (const auto& [what, rows, width, shortest] : kCases) {
    const Shape shape = TraceShape(test::Layout(rows));
    const auto outline = Outline(shape);
    const auto neck = NarrowestNeck(outline, shape.cell);
    ASSERT_TRUE(neck) << what;
    EXPECT_NEAR(neck->width, 10 * width, 1E-6) << what;
    EXPECT_NEAR(ShortestSegment(outline), 10 * shortest, 1E-6) << what;
  }
}

TEST(Measures, TakeArcsForWhatTheyAreWhereverThePlateLies) {
  for (const double far : {0.0, 1E6, -1E9}) {
    SCOPED_TRACE(far);
    Model model = test::Plate(40, 60, 10);
    test::CutDisc(model, 20, 20, 8);
    test::CutDisc(model, 40, 20, 8);
    for (int n = 1; n <= model.NodeCount; ++n) model.NodeXY(n, 1) += far;
    const OutlineFigures figures = Figures(model);
    ASSERT_EQ(figures.circles.size(), 2U);
    const Circle &a = figures.circles[0], &b = figures.circles[1];
    ASSERT_TRUE(figures.neck);
    EXPECT_NEAR(figures.neck->width, Length(a.centre - b.centre) - a.radius - b.radius, 0.1);
    EXPECT_NEAR(figures.neck->middle.x - far, 300, 1);
  }
}

}  // namespace
}  // namespace quillane
