// The loops around the material, the guarantees of smoothing, and the contents of the files.
// scripts/exports/check_exports.sh checks them with other programs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "export/outline_file.h"
#include "export/outline_support.h"
#include "export/shape.h"
#include "export/smoothing.h"
#include "export/vtu.h"
#include "fem/analysis.h"
#include "fem/mesh.h"
#include "model/regular_grid.h"
#include "model/safe_file.h"
#include "support/plates.h"

namespace quillane {
namespace {

TEST(Shape, LoopsAreWhatAPersonSees) {
  const struct {
    const char* what;
    std::vector<std::string> rows;
    std::vector<double> areas;  ///< of the loops in cells, ascending; holes negative
    std::size_t corners;        ///< of all polygons
  } kCases[] = {
      {"non-design is material, cut out is none", {"#x", "NN"}, {3}, 6},
      {"a hole", {"####", "#..#", "####"}, {-2, 12}, 8},
      {"island in a hole", {"#####", "#...#", "#.#.#", "#...#", "#####"}, {-9, 1, 25}, 12},
      {"two holes that touch in a corner", {"####", "#.##", "##.#", "####"}, {-1, -1, 16}, 12},
      {"two members that touch in two corners", {"##.", "#.#", ".##"}, {3, 3}, 12},
      {"a ring closed by a corner only", {".##", "#.#", "###"}, {-1, 8}, 10},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.what);
    const Shape shape = TraceShape(test::Layout(c.rows));
    std::vector<double> areas;
    std::size_t corners = 0;
    for (const auto& loop : shape.loops) areas.push_back(LoopArea(shape, loop) / 100);
    for (const auto& contour : Outline(shape)) corners += contour.size();
    std::ranges::sort(areas);
    EXPECT_EQ(areas, c.areas);
    EXPECT_EQ(corners, c.corners);
  }
}

TEST(Shape, LiesWhereTheModelLies) {
  Model model;
  model.ElementSize = 0.1F, model.DomainX1 = -7, model.DomainY1 = 4;
  BuildMesh(model, 100, 150);  // its coordinates are sums with rounding errors
  std::ranges::fill(model.CellState.Raw(), kCellDesign);
  const Shape shape = TraceShape(model);
  EXPECT_NEAR(Area(shape), 150, 1E-5);
  const Point corner = Outline(shape).at(0).at(2).from;
  EXPECT_NEAR(corner.x, 8, 1E-6);
  EXPECT_NEAR(corner.y, 14, 1E-6);
}

TEST(Shape, RefusesWhatIsNoRegularGrid) {
  const std::pair<const char*, void (*)(Model&)> kFaults[] = {
      {"no material", [](Model& m) { std::ranges::fill(m.CellState.Raw(), kCellEmpty); }},
      {"lies elsewhere", [](Model& m) { m.NodeXY(m.NodeCount, 2) += 3; }},
      {"other nodes", [](Model& m) { m.ElementNodes(2, 3) = 1; }},
      {"no size", [](Model& m) { m.ElementSize = 0; }},
      {"as many", [](Model& m) { m.NodeCount = 4; }},
      {"too far", [](Model& m) { std::ranges::fill(m.NodeXY.Raw(), 1E300); }},
  };
  for (const auto& [reason, damage] : kFaults) {
    Model model = test::Plate(2, 2);
    damage(model);
    try {
      TraceShape(model);
      ADD_FAILURE() << reason;
    } catch (const FileWriteError& error) {
      EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
    }
  }
}

TEST(OutlineFile, SuffixChoosesTheFormatAndDrawingsAreInMillimetres) {
  EXPECT_EQ(OutlineFormatOf("a/b.svg"), OutlineFormat::kSvg);
  EXPECT_EQ(OutlineFormatOf("b.DXF"), OutlineFormat::kDxf);
  EXPECT_EQ(OutlineFormatOf("b.v2.Stl"), OutlineFormat::kStl);
  for (const char* name : {"b", ".svg", "b.svgz", "b.dxf.gz", "stl", ""}) {
    EXPECT_EQ(OutlineFormatOf(name), std::nullopt) << name;
  }
  const Shape ring = TraceShape(test::Layout({".###.", ".#.#.", "..##.", "....."}));
  const std::string svg = OutlineText(OutlineFormat::kSvg, ring, 1);
  for (const char* part :
       {R"(width="30mm" height="30mm" viewBox="0 0 30 30")", R"(fill-rule="evenodd")",
        R"(d="M 10 20 L 10 10 L 20 10 L 20 20 Z M 10 30 L 30 30 L 30 0 L 0 0 L 0 20 L 10 20 Z")"}) {
    EXPECT_NE(svg.find(part), std::string::npos) << svg;
  }
  for (const double thickness : {0.0, -1.0, 1E300}) {
    EXPECT_THROW(OutlineText(OutlineFormat::kStl, ring, thickness), FileWriteError);
  }
  const std::string dxf = OutlineText(OutlineFormat::kDxf, ring, 1);
  EXPECT_EQ(test::Numbers(dxf, "$INSUNITS\n", '$'), (std::vector<double>{70, 4, 9}));
  EXPECT_EQ(test::Numbers(dxf, "AcDbPolyline\n", 'A'),
            (std::vector<double>{90, 4,  70, 1,  10, 20, 20, 20, 10, 20, 20,
                                 30, 10, 30, 20, 30, 10, 30, 20, 20, 0}));
}

TEST(Vtu, HoldsEveryPresentCellAndItsNodes) {
  Model model = test::Cantilever(3, 4);
  model.CellState(3, 4) = kCellEmpty;
  model.CellState(2, 2) = kCellCutOut;
  model.CellState(1, 2) = kCellNonDesign;
  MarkActiveNodes(model);
  AnalyseStructure(model);
  model.Potential(1, 3) = 7.25;
  const std::string text = VtuText(model);
  const auto array = [&text](const std::string& name) {
    return test::Numbers(text.substr(text.find("Name=\"" + name + "\"")), ">", '<');
  };
  const auto node = array("node"), place = array("place"), moved = array("displacement"),
             load = array("load"), support = array("support"), corners = array("connectivity");
  ASSERT_EQ(node.size(), 19U);
  for (std::size_t k = 0; k < 2 * node.size(); ++k) {
    const int n = static_cast<int>(node[k / 2]), d = 1 + static_cast<int>(k % 2);
    EXPECT_EQ(place[k + k / 2], model.NodeXY(n, d));
    EXPECT_EQ(moved[k + k / 2], model.NodeDisp(n, d));
    EXPECT_EQ(load[k + k / 2], model.NodeLoad(n, d));
    EXPECT_EQ(support[k], model.NodeFreedom(n, d));
  }
  const auto row = array("row"), column = array("column"), stress = array("stress"),
             state = array("state"), potential = array("potential");
  for (const auto& values : {row, column, stress, state, potential}) ASSERT_EQ(values.size(), 10U);
  for (std::size_t c = 0; c < 10; ++c) {
    const int i = static_cast<int>(row[c]), j = static_cast<int>(column[c]);
    EXPECT_EQ(state[c], model.CellState(i, j));
    EXPECT_EQ(stress[c], model.CellStress(i, j));
    EXPECT_EQ(potential[c], model.Potential(i, j));
    EXPECT_EQ(node[static_cast<std::size_t>(corners[4 * c])], test::Node(model, i, j));
  }
  const std::string series = PvdText({"a.vtu", "b & c.vtu"});
  EXPECT_NE(series.find(R"(timestep="1" part="0" file="b &amp; c.vtu")"), std::string::npos);
}

void ExpectPromisesKept(const Model& model) {
  const Shape shape = TraceShape(model), smooth = Smoothed(shape, model);
  EXPECT_LT(std::abs(Area(smooth) - Area(shape)), 0.01 * Area(shape));
  ASSERT_EQ(smooth.loops, shape.loops);
  const auto stays = [&](int n) { return test::Same(smooth.At(n), shape.At(n)); };
  for (const auto& loop : shape.loops) {
    EXPECT_GT(LoopArea(smooth, loop) / LoopArea(shape, loop), 0);
    for (const int n : loop) {
      const auto [i, j] = CornerOfNode(model, n);
      const bool isAtEdge = i == 1 || j == 1 || i > model.CellRowCount || j > model.CellColumnCount;
      EXPECT_TRUE(stays(n) || !(isAtEdge || IsHeld(model, n) || IsLoaded(model, n))) << n;
    }
  }
  for (const auto& [a, b, c, d] : shape.cells) {
    const auto [i, j] = CornerOfNode(model, a);
    const auto gap = [&smooth](int p, int q, int r, int s) {
      return std::min(Distance(smooth.At(p), smooth.At(r), smooth.At(s)),
                      Distance(smooth.At(r), smooth.At(p), smooth.At(q)));
    };
    EXPECT_TRUE(gap(d, a, b, c) >= 5 || HasMaterial(model, i, j - 1) ||
                HasMaterial(model, i, j + 1));
    EXPECT_TRUE(gap(a, b, c, d) >= 5 || HasMaterial(model, i - 1, j) ||
                HasMaterial(model, i + 1, j));
  }
  test::ExpectClosedSolid(OutlineText(OutlineFormat::kStl, smooth, 2.5), 2.5 * Area(smooth), 1E-5);
  const std::vector<test::Segment> outline = test::Segments(smooth);
  test::ExpectNoneMeet(outline);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      EXPECT_EQ(test::IsInside({10 * (j - 0.5), 10 * (i - 0.5)}, outline),
                HasMaterial(model, i, j));
      if (model.CellState(i, j) == kCellDesign || model.CellState(i, j) == kCellEmpty) continue;
      for (const int n : NodesOfCell(model, i, j)) EXPECT_TRUE(stays(n));
    }
  }
}

TEST(Smoothing, KeepsItsPromisesOnRandomLayouts) {
  for (unsigned seed = 1; seed <= 200 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    ExpectPromisesKept(test::RandomLayout(seed));
  }
}

TEST(Smoothing, MakesStaircasesStraight) {
  for (const int run : {1, 3}) {  // columns per step
    SCOPED_TRACE(run);
    constexpr int kColumns = 40, kHeight = 4;
    Model model = test::Plate(kColumns / run + kHeight, kColumns, 10, kCellEmpty);
    for (int j = 1; j <= kColumns; ++j) {
      for (int i = 1; i <= kHeight; ++i) model.CellState(i + (j - 1) / run, j) = kCellDesign;
    }
    const Shape smooth = Smoothed(TraceShape(model), model);
    std::vector<double> heights;  // over the slanted line through the origin, far from both ends
    for (const int n : smooth.loops.at(0)) {
      const Point p = smooth.At(n);
      if (p.x > 100 && p.x < 300) heights.push_back(p.y - p.x / run);
    }
    const auto upper = std::ranges::partition(heights, [](double h) { return h < 20; });
    const auto [low, high] = std::minmax_element(heights.begin(), upper.begin());
    const auto [low2, high2] = std::ranges::minmax_element(upper);
    EXPECT_LT(*high - *low, 1);
    EXPECT_LT(*high2 - *low2, 1);
    EXPECT_NEAR(*low2 - *low, 10 * kHeight, 1);
  }
}

TEST(Smoothing, LeavesHolesAndIslandsTheirArea) {
  for (const int size : {1, 2, 3, 6}) {
    for (const Integer state : {kCellEmpty, kCellDesign}) {
      Model model = test::Plate(12, 12, 10, state == kCellEmpty ? kCellDesign : kCellEmpty);
      for (int i = 0; i < size * size; ++i) model.CellState(4 + i / size, 4 + i % size) = state;
      const Shape shape = TraceShape(model), smooth = Smoothed(shape, model);
      EXPECT_NEAR(LoopArea(smooth, shape.loops.back()) / LoopArea(shape, shape.loops.back()), 1,
                  0.01);
    }
  }
}

}  // namespace
}  // namespace quillane
