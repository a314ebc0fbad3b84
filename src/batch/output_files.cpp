// Tables and pictures as files.
#include "batch/output_files.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QImage>
#include <iterator>

#include "model/safe_file.h"

namespace quillane {

std::string CellTable(const Model& model) {
  std::string text = "row,column,state,stress,potential\n";
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      fmt::format_to(std::back_inserter(text), "{},{},{},{:.17g},{:.17g}\n", i, j,
                     model.CellState(i, j), model.CellStress(i, j), model.Potential(i, j));
    }
  }
  return text;
}

std::string NodeTable(const Model& model) {
  std::string text = "node,x,y,u,v\n";
  for (int k = 1; k <= model.NodeCount; ++k) {
    fmt::format_to(std::back_inserter(text), "{},{:.17g},{:.17g},{:.17g},{:.17g}\n", k,
                   model.NodeXY(k, 1), model.NodeXY(k, 2), model.NodeDisp(k, 1),
                   model.NodeDisp(k, 2));
  }
  return text;
}

void WritePicture(const Model& model, PictureKind kind, int width, int height,
                  const std::filesystem::path& path) {
  const QImage picture = RenderPicture(model, kind, width, height);
  QBuffer png;
  if (picture.isNull() || !picture.save(&png, "PNG")) {
    throw FileWriteError("the picture cannot be made");
  }
  ReplaceFile(path, {png.data().constData(), static_cast<std::size_t>(png.data().size())});
}

}  // namespace quillane
