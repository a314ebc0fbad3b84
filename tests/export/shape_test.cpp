// The loops round the material, against what a person reads from the drawing.
#include "export/shape.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "export/layouts.h"
#include "fem/mesh.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

TEST(Shape, LoopsAreWhatAPersonSees) {
  const struct {
    const char* what;
    std::vector<std::string> rows;
    std::vector<double> areas;  ///< of the loops in cells, ascending; holes negative
    std::size_t corners;        ///< of all polygons
  } kCases[] = {
      {"one cell", {"#"}, {1}, 4},
      {"non-design is material, cut out is none", {"#x", "NN"}, {3}, 6},
      {"a hole", {"####", "#..#", "####"}, {-2, 12}, 8},
      {"island in a hole", {"#####", "#...#", "#.#.#", "#...#", "#####"}, {-9, 1, 25}, 12},
      {"two cells that touch in a corner", {"#.", ".#"}, {1, 1}, 8},
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
    for (const auto& polygon : Outline(shape)) corners += polygon.size();
    std::ranges::sort(areas);
    EXPECT_EQ(areas, c.areas);
    EXPECT_EQ(corners, c.corners);
  }
}

TEST(Shape, LiesWhereTheModelLies) {
  Model model;
  model.ElementSize = 0.1F;
  model.DomainX1 = -7;
  model.DomainY1 = 4;
  BuildMesh(model, 100, 150);  // its places are sums, a little off
  for (Integer& cell : model.CellState.Raw()) cell = kCellDesign;
  const Shape shape = TraceShape(model);
  EXPECT_NEAR(Area(shape), 150, 1E-5);
  const Point corner = Outline(shape).at(0).at(2);
  EXPECT_NEAR(corner.x, 8, 1E-6);
  EXPECT_NEAR(corner.y, 14, 1E-6);
}

TEST(Shape, RefusesWhatIsNoRegularGrid) {
  const std::pair<const char*, std::function<void(Model&)>> kFaults[] = {
      {"no material", [](Model& m) { std::ranges::fill(m.CellState.Raw(), kCellEmpty); }},
      {"lies elsewhere", [](Model& m) { m.NodeXY(5, 2) += 3; }},
      {"other nodes", [](Model& m) { m.ElementNodes(2, 3) = 1; }},
      {"no size", [](Model& m) { m.ElementSize = 0; }},
      {"as many", [](Model& m) { m.NodeCount = 4; }},
      {"too far",
       [](Model& m) {
         for (double& place : m.NodeXY.Raw()) place += 1E300;
       }},
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

}  // namespace
}  // namespace quillane
