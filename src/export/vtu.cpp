#include "export/vtu.h"

#include <fmt/format.h>

#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>
#include <initializer_list>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "model/regular_grid.h"

namespace quillane {
namespace {

/// An XML file of the given type of data.
class VtkFile {
 public:
  using Attributes = std::initializer_list<std::pair<const char*, std::string>>;

  explicit VtkFile(const char* type) : xml_(&text_) {
    xml_.setAutoFormatting(true);
    xml_.writeStartDocument();
    Begin("VTKFile", {{"type", type}, {"version", "0.1"}, {"byte_order", "LittleEndian"}});
    Begin(type);
  }

  void Begin(const char* name, Attributes attributes = {}) {
    xml_.writeStartElement(QString::fromLatin1(name));
    for (const auto& [key, value] : attributes) {
      xml_.writeAttribute(QString::fromLatin1(key), QString::fromStdString(value));
    }
  }

  void End() { xml_.writeEndElement(); }

  /// Writes one or more values for each item: value(item, component), components from 1.
  template <class Items, class Value>
  void Array(const char* name, const char* type, int components, const Items& items,
             Value&& value) {
    std::string numbers;
    for (const auto& item : items) {
      for (int d = 1; d <= components; ++d) {
        fmt::format_to(std::back_inserter(numbers), "{} ", value(item, d));
      }
    }
    Begin("DataArray", {{"type", type},
                        {"Name", name},
                        {"NumberOfComponents", std::to_string(components)},
                        {"format", "ascii"}});
    xml_.writeCharacters(QString::fromStdString(numbers));
    End();
  }

  std::string Text() {
    xml_.writeEndDocument();
    return text_.toStdString();
  }

 private:
  QByteArray text_;
  QXmlStreamWriter xml_;
};

/// The cells with material, their nodes, and the corners of each cell as indices into the nodes.
struct Quads {
  explicit Quads(const Model& model) {
    std::unordered_map<int, int> indexOfNode;
    ForEachPresentCell(model, [&](int i, int j, int element) {
      cells.push_back({i, j});
      for (const int n : NodesOfElement(model, element)) {
        const auto [known, fresh] = indexOfNode.try_emplace(n, static_cast<int>(nodes.size()));
        if (fresh) nodes.push_back(n);
        corners.push_back(known->second);
      }
    });
  }

  std::vector<CellIndex> cells;
  std::vector<int> nodes;
  std::vector<int> corners;
};

void WriteNodes(VtkFile& file, const Model& model, const std::vector<int>& nodes) {
  const auto vector = [](const Array2<Double>& values) {
    return [&values](int n, int d) { return d == 3 ? 0 : values(n, d); };
  };
  file.Begin("PointData", {{"Vectors", "displacement"}});
  file.Array("node", "Int32", 1, nodes, [](int n, int) { return n; });
  file.Array("displacement", "Float64", 3, nodes, vector(model.NodeDisp));
  file.Array("load", "Float64", 3, nodes, vector(model.NodeLoad));
  file.Array("support", "Int32", 2, nodes, [&](int n, int d) { return model.NodeFreedom(n, d); });
  file.End();
  file.Begin("Points");
  file.Array("place", "Float64", 3, nodes, vector(model.NodeXY));
  file.End();
}

void WriteCells(VtkFile& file, const Model& model, const Quads& quads) {
  constexpr int kQuad = 9;
  const auto& cells = quads.cells;
  const auto field = [](const auto& values) {
    return [&values](CellIndex c, int) { return values(c.row, c.column); };
  };
  file.Begin("CellData", {{"Scalars", "stress"}});
  file.Array("row", "Int32", 1, cells, [](CellIndex c, int) { return c.row; });
  file.Array("column", "Int32", 1, cells, [](CellIndex c, int) { return c.column; });
  file.Array("state", "Int32", 1, cells, field(model.CellState));
  file.Array("stress", "Float64", 1, cells, field(model.CellStress));
  file.Array("potential", "Float64", 1, cells, field(model.Potential));
  file.End();
  file.Begin("Cells");
  file.Array("connectivity", "Int32", 1, quads.corners, [](int corner, int) { return corner; });
  file.Array("offsets", "Int32", 1, cells, [end = 0](CellIndex, int) mutable { return end += 4; });
  file.Array("types", "UInt8", 1, cells, [](CellIndex, int) { return kQuad; });
  file.End();
}

}  // namespace

std::string VtuText(const Model& model) {
  const Quads quads(model);
  VtkFile file("UnstructuredGrid");
  file.Begin("Piece", {{"NumberOfPoints", std::to_string(quads.nodes.size())},
                       {"NumberOfCells", std::to_string(quads.cells.size())}});
  WriteNodes(file, model, quads.nodes);
  WriteCells(file, model, quads);
  return file.Text();
}

std::string PvdText(const std::vector<std::string>& files) {
  VtkFile series("Collection");
  for (std::size_t step = 0; step < files.size(); ++step) {
    series.Begin("DataSet",
                 {{"timestep", std::to_string(step)}, {"part", "0"}, {"file", files[step]}});
    series.End();
  }
  return series.Text();
}

}  // namespace quillane
