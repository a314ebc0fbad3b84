// What is in the files, read as other programs read them.
#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>
#include <gtest/gtest.h>

#include <QXmlStreamReader>
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

TEST(OutlineFile, SuffixChoosesTheFormat) {
  EXPECT_EQ(OutlineFormatOf("a/b.svg"), OutlineFormat::kSvg);
  EXPECT_EQ(OutlineFormatOf("b.DXF"), OutlineFormat::kDxf);
  EXPECT_EQ(OutlineFormatOf("b.v2.Stl"), OutlineFormat::kStl);
  for (const char* name : {"b", ".svg", "b.svgz", "b.dxf.gz", "stl", ""}) {
    EXPECT_EQ(OutlineFormatOf(name), std::nullopt) << name;
  }
}

TEST(OutlineFile, SvgHasOnePathInMillimetres) {
  const Shape ring = TraceShape(test::Layout({".###.", ".#.#.", "..##.", "....."}));
  const std::string text = OutlineText(OutlineFormat::kSvg, ring, 1);
  for (const char* part :
       {R"(width="30mm" height="30mm" viewBox="0 0 30 30")", R"(fill-rule="evenodd")",
        R"(d="M 10 20 L 10 10 L 20 10 L 20 20 Z M 10 30 L 30 30 L 30 0 L 0 0 L 0 20 L 10 20 Z")"}) {
    EXPECT_NE(text.find(part), std::string::npos) << text;
  }
}

class DxfReader : public DL_CreationAdapter {
 public:
  void addPolyline(const DL_PolylineData& data) override {
    EXPECT_EQ(data.flags & 1, 1) << "is not closed";
    EXPECT_EQ(attributes.getLayer(), "OUTLINE");
    polygons.emplace_back();
  }
  void addVertex(const DL_VertexData& v) override { polygons.back().push_back({v.x, v.y}); }
  void setVariableInt(const std::string& key, int value, int) override { numbers[key] = value; }

  std::vector<std::vector<Point>> polygons;
  std::map<std::string, int> numbers;
};

TEST(OutlineFile, DxfHasClosedPolylinesInMillimetres) {
  const Model model = test::RandomLayout(7);
  const Shape shape = Smoothed(TraceShape(model), model);
  const test::ScratchFolder folder;
  const std::string path = (folder / "a.dxf").string();
  test::WriteFile(path, OutlineText(OutlineFormat::kDxf, shape, 1));
  DxfReader reader;
  ASSERT_TRUE(DL_Dxf().in(path, &reader));
  EXPECT_EQ(reader.numbers["$INSUNITS"], 4);
  const auto outline = Outline(shape);
  ASSERT_EQ(reader.polygons.size(), outline.size());
  for (std::size_t k = 0; k < outline.size(); ++k) {
    ASSERT_EQ(reader.polygons[k].size(), outline[k].size());
    for (std::size_t n = 0; n < outline[k].size(); ++n) {
      EXPECT_NEAR(Length(reader.polygons[k][n] - outline[k][n]), 0, 1E-9);
    }
  }
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

/// The arrays of a VTU file by name.
std::map<std::string, std::vector<double>> Arrays(const std::string& text) {
  std::map<std::string, std::vector<double>> arrays;
  QXmlStreamReader xml(QByteArray::fromStdString(text));
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"DataArray") continue;
    std::vector<double>& array = arrays[xml.attributes().value("Name").toString().toStdString()];
    std::istringstream numbers(xml.readElementText().toStdString());
    for (double number = 0; numbers >> number;) array.push_back(number);
  }
  EXPECT_FALSE(xml.hasError());
  return arrays;
}

TEST(Vtu, HoldsEveryPresentCellAndItsNodes) {
  Model model = test::Cantilever(3, 4);
  model.CellState(3, 4) = kCellEmpty;
  model.CellState(2, 2) = kCellCutOut;
  model.CellState(1, 3) = kCellNonDesign;
  MarkActiveNodes(model);
  AnalyseStructure(model);
  model.Potential(1, 3) = 7.25;
  auto arrays = Arrays(VtuText(model));
  ASSERT_EQ(arrays["types"], std::vector<double>(10, 9));
  ASSERT_EQ(arrays["node"].size(), 19U);
  ASSERT_EQ(arrays["connectivity"].size(), 40U);
  for (std::size_t k = 0; k < 2 * arrays["node"].size(); ++k) {
    const int n = static_cast<int>(arrays["node"][k / 2]), d = 1 + static_cast<int>(k % 2);
    const std::size_t at = 3 * (k / 2) + k % 2;
    EXPECT_EQ(arrays["place"][at], model.NodeXY(n, d));
    EXPECT_EQ(arrays["displacement"][at], model.NodeDisp(n, d));
    EXPECT_EQ(arrays["load"][at], model.NodeLoad(n, d));
    EXPECT_EQ(arrays["support"][k], model.NodeFreedom(n, d));
  }
  for (std::size_t c = 0; c < 10; ++c) {
    const int i = static_cast<int>(arrays["row"][c]), j = static_cast<int>(arrays["column"][c]);
    EXPECT_EQ(arrays["state"][c], model.CellState(i, j));
    EXPECT_EQ(arrays["stress"][c], model.CellStress(i, j));
    EXPECT_EQ(arrays["potential"][c], model.Potential(i, j));
    const auto corner = static_cast<std::size_t>(arrays["connectivity"][4 * c]);
    EXPECT_EQ(arrays["node"][corner], test::Node(model, i, j));
  }
}

TEST(Vtu, SeriesNamesItsFilesByStep) {
  const std::string text = PvdText({"a.vtu", "b & c.vtu"});
  EXPECT_NE(text.find(R"(timestep="0" part="0" file="a.vtu")"), std::string::npos) << text;
  EXPECT_NE(text.find(R"(timestep="1" part="0" file="b &amp; c.vtu")"), std::string::npos) << text;
}

}  // namespace
}  // namespace quillane
