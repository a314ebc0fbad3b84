#include "shape_pictures.h"

#include <fmt/format.h>

#include <QPainter>
#include <algorithm>

#include "image/picture.h"

namespace quillane {
namespace {

constexpr int kGap = 8;  ///< pixels

}  // namespace

QImage PairPicture(const ShapePair& pair, int width, int height) {
  const auto label = [](const char* who, const FoundShape& shape) {
    return fmt::format("{}: {:.5g} N mm at {:.3f}{}", who, shape.compliance, shape.share,
                       shape.sound ? "" : ", broken");
  };
  const FoundShape& ours = pair.ours.shape;
  PictureOptions options;
  options.size = PictureSize{width, height};
  options.fitDomain = true;
  options.style.grid = false;
  options.style.range = ValueRange{0, pair.density.model.MaxStress};
  options.label =
      pair.plate->name + (pair.Reached() ? "  " : " (not reached)  ") + label("ours", ours);
  const QImage left = RenderPicture(ours.model, options);
  options.label = label("density method", pair.density);
  return Montage({left, RenderPicture(pair.density.model, options)}, 2);
}

QImage Montage(const std::vector<QImage>& pictures, int columns) {
  int width = 1, height = 1;
  for (const QImage& picture : pictures) {
    width = std::max(width, picture.width());
    height = std::max(height, picture.height());
  }
  const int count = static_cast<int>(pictures.size());
  const int rows = (count + columns - 1) / columns;
  QImage montage(columns * (width + kGap), rows * (height + kGap), QImage::Format_RGB32);
  montage.fill(Qt::white);
  QPainter painter(&montage);
  for (int k = 0; k < count; ++k) {
    painter.drawImage(k % columns * (width + kGap), k / columns * (height + kGap),
                      pictures[static_cast<std::size_t>(k)]);
  }
  return montage;
}

}  // namespace quillane
