// Drawing on a QImage in device pixels.
#include "image/image_area.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "model/run_time_error.h"

namespace quillane {
namespace {

/// The longest side of a picture that the painter can address, device pixels.
constexpr double kLongestSide = 32000;

/// Pixels around the picture where what is drawn is still told apart.
constexpr int kMargin = 64;

/// No position matters beyond this many pixels; keeps differences of positions finite.
constexpr double kFarAway = 1e9;

/// Positions this close below the middle of a pixel count as the middle, so that an edge reached
/// over different roundings falls on one pixel.
constexpr double kSnapBias = 1.0 / 1024;

/// The pixel boundary nearest to a device position, not further out than the margin.
int Snap(double position, int size) {
  const double near = std::clamp<double>(position, -kMargin, size + kMargin);
  return static_cast<int>(std::floor(near + 0.5 + kSnapBias));
}

bool IsPoint(QPointF point) { return !std::isnan(point.x()) && !std::isnan(point.y()); }

/// One side of the clipping of a line from + t * step: narrows first..last to the part where the
/// coordinate is between lower and upper. False where none is left.
bool ClipSide(double from, double step, double lower, double upper, double& first, double& last) {
  if (step == 0) return from >= lower && from <= upper;
  double enter = (lower - from) / step;
  double leave = (upper - from) / step;
  if (enter > leave) std::swap(enter, leave);
  first = std::max(first, enter);
  last = std::min(last, leave);
  return first <= last;
}

}  // namespace

ImageArea::ImageArea() { Resize(1, 1, 1); }

ImageArea::~ImageArea() = default;

void ImageArea::Resize(int width, int height, double devicePixelRatio) {
  const double deviceWidth = std::max(1.0, std::round(std::max(width, 1) * devicePixelRatio));
  const double deviceHeight = std::max(1.0, std::round(std::max(height, 1) * devicePixelRatio));
  QImage fresh;
  if (deviceWidth <= kLongestSide && deviceHeight <= kLongestSide) {
    fresh =
        QImage(static_cast<int>(deviceWidth), static_cast<int>(deviceHeight), QImage::Format_RGB32);
  }
  if (fresh.isNull()) {
    throw RunTimeError(ErrorKind::kOutOfMemory, "a picture of " + std::to_string(width) + " x " +
                                                    std::to_string(height) +
                                                    " pixels is too large");
  }
  Finish();
  image_ = std::move(fresh);
  image_.setDevicePixelRatio(devicePixelRatio);
  ratio_ = devicePixelRatio;
  SetLineWidth(linePixels_);
  Clear();
}

const QImage& ImageArea::Image() const {
  Finish();
  return image_;
}

void ImageArea::Finish() const {
  if (painter_.isActive()) painter_.end();
}

void ImageArea::Open() {
  if (painter_.isActive()) return;
  bits_ = image_.bits();
  target_ = QImage(bits_, image_.width(), image_.height(), image_.bytesPerLine(), image_.format());
  painter_.begin(&target_);
  painter_.setRenderHint(QPainter::Antialiasing);
  penIsStale_ = true;
  lastFill_ = {};
}

QPainter& ImageArea::Painter() {
  Open();
  if (penIsStale_) painter_.setPen(QPen(QColor(color_), lineWidth_));
  penIsStale_ = false;
  lastFill_ = {};
  return painter_;
}

void ImageArea::FillPixels(PixelBox box, QRgb color) {
  box.left = std::max(box.left, 0);
  box.top = std::max(box.top, 0);
  box.right = std::min(box.right, image_.width());
  box.bottom = std::min(box.bottom, image_.height());
  Open();
  const bool isDone = box == lastFill_ && color == lastColor_;
  if (box.left >= box.right || isDone) return;
  for (int row = box.top; row < box.bottom; ++row) {
    auto* const pixels = reinterpret_cast<QRgb*>(bits_ + row * image_.bytesPerLine());
    std::fill(pixels + box.left, pixels + box.right, color);
  }
  lastFill_ = box;
  lastColor_ = color;
}

QPointF ImageArea::DevicePoint(double x, double y) const {
  const double column = (x - scale_.left) / (scale_.right - scale_.left) * image_.width();
  const double row = (scale_.top - y) / (scale_.top - scale_.bottom) * image_.height();
  return {std::clamp(column, -kFarAway, kFarAway), std::clamp(row, -kFarAway, kFarAway)};
}

ImageArea::PixelBox ImageArea::Snapped(QPointF from, QPointF to) const {
  const auto [left, right] =
      std::minmax({Snap(from.x(), image_.width()), Snap(to.x(), image_.width())});
  const auto [top, bottom] =
      std::minmax({Snap(from.y(), image_.height()), Snap(to.y(), image_.height())});
  return {left, top, right, bottom};
}

void ImageArea::SetScale(const UserScale& scale) { scale_ = scale; }

void ImageArea::SetBackground(Color color) {
  background_ = qRgb(color.red, color.green, color.blue);
}

void ImageArea::Clear() { FillPixels({0, 0, image_.width(), image_.height()}, background_); }

void ImageArea::SetColor(Color color) {
  color_ = qRgb(color.red, color.green, color.blue);
  penIsStale_ = true;
}

void ImageArea::SetLineWidth(int pixels) {
  linePixels_ = pixels;
  lineWidth_ = std::max(1, static_cast<int>(std::lround(pixels * ratio_)));
  penIsStale_ = true;
}

/// A line of the present width along a box without width or height.
void ImageArea::FillStroke(PixelBox box) {
  const int before = lineWidth_ / 2;
  const int after = lineWidth_ - before;
  FillPixels({box.left - before, box.top - before, box.right + after, box.bottom + after}, color_);
}

void ImageArea::DrawLine(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const PixelBox box = Snapped(from, to);
  if (box.left == box.right || box.top == box.bottom) {
    FillStroke(box);
  } else {
    DrawSlantedLine(from, to);
  }
}

void ImageArea::DrawSlantedLine(QPointF from, QPointF to) {
  const QPointF step = to - from;
  double first = 0;
  double last = 1;
  if (!ClipSide(from.x(), step.x(), -kMargin, image_.width() + kMargin, first, last) ||
      !ClipSide(from.y(), step.y(), -kMargin, image_.height() + kMargin, first, last)) {
    return;
  }
  // An odd width lies on the middle of its pixels, as in the lines that cover whole pixels.
  const double offset = lineWidth_ % 2 == 0 ? 0.0 : 0.5;
  const auto onPixel = [&](QPointF point) {
    return QPointF(Snap(point.x(), image_.width()) + offset,
                   Snap(point.y(), image_.height()) + offset);
  };
  Painter().drawLine(onPixel(from + first * step), onPixel(from + last * step));
}

void ImageArea::DrawBox(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const auto [left, top, right, bottom] = Snapped(from, to);
  FillStroke({left, top, right, top});
  FillStroke({left, bottom, right, bottom});
  FillStroke({left, top, left, bottom});
  FillStroke({right, top, right, bottom});
}

void ImageArea::FillBox(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (IsPoint(from) && IsPoint(to)) FillPixels(Snapped(from, to), color_);
}

void ImageArea::DrawCircle(double x, double y, double radius) {
  const QPointF center = DevicePoint(x, y);
  const double extent = std::fabs(radius / (scale_.right - scale_.left)) * image_.width();
  const bool near = IsPoint(center) && std::fabs(center.x()) < kLongestSide &&
                    std::fabs(center.y()) < kLongestSide && extent < kLongestSide;
  if (!near) return;
  const double offset = lineWidth_ % 2 == 0 ? 0.0 : 0.5;
  Painter().drawEllipse(QPointF(Snap(center.x(), image_.width()) + offset,
                                Snap(center.y(), image_.height()) + offset),
                        extent, extent);
}

void ImageArea::SetTextSize(double width, double height, std::string_view sample) {
  const double boxWidth = std::fabs(width / (scale_.right - scale_.left)) * image_.width();
  const double boxHeight = std::fabs(height / (scale_.top - scale_.bottom)) * image_.height();
  const QString text = QString::fromUtf8(sample.data(), static_cast<qsizetype>(sample.size()));
  font_ = QGuiApplication::font();
  int size = static_cast<int>(std::lround(QFontInfo(font_).pixelSize() * ratio_));
  do {
    font_.setPixelSize(std::max(size, 1));
    const QFontMetricsF metrics(font_);
    if (metrics.height() <= boxHeight && metrics.horizontalAdvance(text) <= boxWidth) return;
  } while (--size > 0);
}

void ImageArea::DrawText(double x, double y, std::string_view text) {
  const QPointF corner = DevicePoint(x, y);
  if (!IsPoint(corner) || std::fabs(corner.x()) > kLongestSide ||
      std::fabs(corner.y()) > kLongestSide) {
    return;
  }
  Painter().setFont(font_);
  painter_.drawText(
      QPointF(std::round(corner.x()), std::round(corner.y() + QFontMetricsF(font_).ascent())),
      QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace quillane
