// What is in the files. That other programs agree is seen by scripts/check_exports.sh.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <map>
#include <sstream>

#include "export/layouts.h"
#include "export/outline_file.h"
#include "export/smoothing.h"
#include "export/vtu.h"
#include "fem/analysis.h"
#include "fem/mesh.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

const std::vector<std::string> kRing = {".###.", ".#.#.", "..##.", "....."};

/// The numbers that stand in a text after one mark, up to another.
std::vector<double> Numbers(const std::string& text, const std::string& after, char end) {
  const std::size_t at = text.find(after);
  EXPECT_NE(at, std::string::npos) << after;
  const std::size_t begin = at + after.size();
  std::istringstream stream(text.substr(begin, text.find(end, begin) - begin));
  return {std::istream_iterator<double>(stream), {}};
}

TEST(OutlineFile, SuffixChoosesTheFormat) {
  EXPECT_EQ(OutlineFormatOf("a/b.svg"), OutlineFormat::kSvg);
  EXPECT_EQ(OutlineFormatOf("b.DXF"), OutlineFormat::kDxf);
  EXPECT_EQ(OutlineFormatOf("b.v2.Stl"), OutlineFormat::kStl);
  for (const char* name : {"b", ".svg", "b.svgz", "b.dxf.gz", "stl", ""}) {
    EXPECT_EQ(OutlineFormatOf(name), std::nullopt) << name;
  }
}

TEST(OutlineFile, DrawingsAreInMillimetres) {
  const Shape ring = TraceShape(test::Layout(kRing));
  const std::string svg = OutlineText(OutlineFormat::kSvg, ring, 1);
  for (const char* part :
       {R"(width="30mm" height="30mm" viewBox="0 0 30 30")", R"(fill-rule="evenodd")",
        R"(d="M 10 20 L 10 10 L 20 10 L 20 20 Z M 10 30 L 30 30 L 30 0 L 0 0 L 0 20 L 10 20 Z")"}) {
    EXPECT_NE(svg.find(part), std::string::npos) << svg;
  }
  const std::string dxf = OutlineText(OutlineFormat::kDxf, ring, 1);
  EXPECT_EQ(Numbers(dxf, "$INSUNITS\n", '$'), (std::vector<double>{70, 4, 9}));
  const std::string line = dxf.substr(dxf.find("AcDbPolyline"));
  EXPECT_EQ(Numbers(line, "AcDbPolyline\n", 'A'),
            (std::vector<double>{90, 4,  70, 1,  10, 20, 20, 20, 10, 20, 20,
                                 30, 10, 30, 20, 30, 10, 30, 20, 20, 0}));
}

TEST(OutlineFile, StlIsAClosedSolidTurnedOutward) {
  using Vertex = std::array<float, 3>;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    const Model model = test::RandomLayout(seed);
    const Shape shape = Smoothed(TraceShape(model), model);
    const std::string text = OutlineText(OutlineFormat::kStl, shape, 2.5);
    ASSERT_EQ((text.size() - 84) % 50, 0U);
    std::map<std::pair<Vertex, Vertex>, int> edges;  // times there less times back
    double volume = 0;
    for (std::size_t at = 84; at < text.size(); at += 50) {
      std::array<Vertex, 4> facet;  // its normal, then its corners
      std::memcpy(facet.data(), text.data() + at, sizeof facet);
      const auto& [normal, a, b, c] = facet;
      volume += double{a[2] + b[2] + c[2]} / 6 *
                Cross({b[0] - a[0], b[1] - a[1]}, {c[0] - a[0], c[1] - a[1]});
      for (const auto& edge : {std::pair(a, b), std::pair(b, c), std::pair(c, a)}) {
        ++edges[edge];
        --edges[{edge.second, edge.first}];
      }
    }
    for (const auto& [edge, open] : edges) EXPECT_EQ(open, 0);
    EXPECT_NEAR(volume / (2.5 * Area(shape)), 1, 1E-5);
    for (const double thickness : {0.0, -1.0, 1E300}) {
      EXPECT_THROW(OutlineText(OutlineFormat::kStl, shape, thickness), FileWriteError);
    }
  }
}

TEST(Vtu, HoldsEveryPresentCellAndItsNodes) {
  Model model = test::Cantilever(3, 4);
  model.CellState(3, 4) = kCellEmpty;
  model.CellState(2, 2) = kCellCutOut;
  MarkActiveNodes(model);
  AnalyseStructure(model);
  model.Potential(1, 3) = 7.25;
  const std::string text = VtuText(model);
  const auto array = [&text](const std::string& name) {
    return Numbers(text.substr(text.find("Name=\"" + name + "\"")), ">", '<');
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
  ASSERT_EQ(row.size(), 10U);
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

}  // namespace
}  // namespace quillane
