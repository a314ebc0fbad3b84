#include "batch/picture_file.h"

#include <fmt/format.h>

#include <QBuffer>
#include <QImage>

#include "model/safe_file.h"

namespace quillane {

std::string PictureFile(const BatchOptions& options, const Model& model, int step,
                        double startVolume) {
  PictureOptions picture = options.picture;
  if (options.label) {
    picture.label = fmt::format("step {}   volume {:.1f} %", step,
                                startVolume > 0 ? 100 * model.Volume / startVolume : 0);
  }
  const QImage image = RenderPicture(model, picture);
  QBuffer png;
  if (image.isNull() || !image.save(&png, "PNG")) {
    throw FileWriteError("the picture cannot be encoded");
  }
  return png.data().toStdString();
}

}  // namespace quillane
