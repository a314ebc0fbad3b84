// A shape as a drawing for computer-aided design and laser cutters.
#include <dxflib/dl_dxf.h>

#include <QFile>
#include <QTemporaryDir>
#include <cmath>
#include <memory>

#include "export/outline_file.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

constexpr const char* kLayer = "OUTLINE";
constexpr const char* kBlocks[] = {"*Model_Space", "*Paper_Space"};

/// Writes the header variables that readers use; 4 stands for millimetres.
void WriteHeader(DL_Dxf& dxf, DL_WriterA& file) {
  dxf.writeHeader(file);
  file.dxfString(9, "$INSUNITS");
  file.dxfInt(70, 4);
  file.dxfString(9, "$MEASUREMENT");
  file.dxfInt(70, 1);
  file.sectionEnd();
}

/// Writes the tables and blocks that a reader of this release expects, and the layer.
void WriteTables(DL_Dxf& dxf, DL_WriterA& file) {
  const DL_Attributes plain("", 7, -1, "CONTINUOUS", 1);
  file.sectionTables();
  dxf.writeVPort(file);
  file.tableLinetypes(3);
  for (const char* name : {"BYBLOCK", "BYLAYER", "CONTINUOUS"}) {
    dxf.writeLinetype(file, DL_LinetypeData(name, "", 0, 0, 0.0));
  }
  file.tableEnd();
  file.tableLayers(2);
  for (const char* name : {"0", kLayer}) dxf.writeLayer(file, DL_LayerData(name, 0), plain);
  file.tableEnd();
  file.tableStyle(1);
  dxf.writeStyle(file, DL_StyleData("Standard", 0, 0.0, 1.0, 0.0, 0, 2.5, "txt", ""));
  file.tableEnd();
  dxf.writeView(file);
  dxf.writeUcs(file);
  file.tableAppid(1);
  dxf.writeAppid(file, "ACAD");
  file.tableEnd();
  dxf.writeDimStyle(file, 2.5, 2.5, 0.625, 0.625, 2.5);
  file.table("BLOCK_RECORD", 2, 1);
  for (const char* name : kBlocks) dxf.writeBlockRecord(file, name);
  file.tableEnd();
  file.sectionEnd();

  file.sectionBlocks();
  for (const char* name : kBlocks) {
    dxf.writeBlock(file, DL_BlockData(name, 0, 0.0, 0.0, 0.0));
    dxf.writeEndBlock(file, name);
  }
  file.sectionEnd();
}

/// Returns the bulge, by which the format describes an arc: the tangent of a quarter of its angle,
/// negative if it is clockwise; 0 for a segment.
double Bulge(const Side& side) {
  return side.arc == nullptr ? 0 : -std::tan(ClockwiseAngle(*side.arc, side.from, side.to) / 4);
}

void WriteContours(DL_Dxf& dxf, DL_WriterA& file, const Shape& shape) {
  constexpr int kClosed = 1;
  const DL_Attributes byLayer(kLayer, 256, -1, "BYLAYER", 1);
  file.sectionEntities();
  for (const Contour& contour : Outline(shape)) {
    if (contour.size() == 1) {
      const auto [centre, radius] = *contour.front().arc;
      dxf.writeCircle(file, DL_CircleData(centre.x, centre.y, 0, radius), byLayer);
      continue;
    }
    const int count = static_cast<int>(contour.size());
    dxf.writePolyline(file, DL_PolylineData(count, 0, 0, kClosed), byLayer);
    for (const Side& side : contour) {
      dxf.writeVertex(file, DL_VertexData(side.from.x, side.from.y, 0, Bulge(side)));
    }
    dxf.writePolylineEnd(file);
  }
  file.sectionEnd();
}

/// Writes the least set of objects that the release requires, a dictionary with an empty dictionary
/// of groups: the library's set does not name the owners.
void WriteObjects(DL_WriterA& file) {
  constexpr int kNobody = 0, kRoot = 0xC, kGroups = 0xD;
  const auto dictionary = [&file](int handle, int owner) {
    file.dxfString(0, "DICTIONARY");
    file.dxfHex(5, handle);
    file.dxfHex(330, owner);
    file.dxfString(100, "AcDbDictionary");
    file.dxfInt(281, 1);
  };
  file.sectionObjects();
  dictionary(kRoot, kNobody);
  file.dxfString(3, "ACAD_GROUP");
  file.dxfHex(350, kGroups);
  dictionary(kGroups, kRoot);
  file.sectionEnd();
}

}  // namespace

std::string DxfText(const Shape& shape) {
  // The library writes files only.
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("outline.dxf"));
  DL_Dxf dxf;
  const std::unique_ptr<DL_WriterA> file(
      dxf.out(QFile::encodeName(path).constData(), DL_Codes::AC1015));
  if (!folder.isValid() || file == nullptr) {
    throw FileWriteError("no file can be written in the temporary folder");
  }
  WriteHeader(dxf, *file);
  WriteTables(dxf, *file);
  WriteContours(dxf, *file, shape);
  WriteObjects(*file);
  file->dxfEOF();
  file->close();

  QFile written(path);
  if (!written.open(QIODevice::ReadOnly | QIODevice::Text))  // line ends as on every system
    throw FileWriteError("no file can be written in the temporary folder");
  std::string text = written.readAll().toStdString();
  if (!text.ends_with("EOF\n")) throw FileWriteError("the temporary folder is full");
  return text;
}

}  // namespace quillane
