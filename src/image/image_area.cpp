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

/// How far outside the picture positions remain distinct, device pixels.
constexpr double kMargin = 64;

/// The limit that positions are clamped to, which keeps their differences finite, device pixels.
constexpr double kFarAway = 1e9;

/// Positions this close below the middle of a pixel count as the middle, so that an edge falls on
/// one pixel however its position was rounded.
constexpr double kSnapBias = 1.0 / 1024;

/// Returns the pixel boundary nearest to a device position, clamped to the margin.
int Snap(double position, int size) {
  const double near = std::clamp(position, -kMargin, size + kMargin);
  return static_cast<int>(std::floor(near + 0.5 + kSnapBias));
}

/// Returns the offset of a line from a pixel's corner: a line of odd width runs through its middle.
QPointF PenOffset(int width) { return width % 2 == 0 ? QPointF(0, 0) : QPointF(0.5, 0.5); }

/// Returns whether a position is defined: an infinite coordinate or a scale without extent may
/// leave none.
bool IsPoint(QPointF point) { return !std::isnan(point.x()) && !std::isnan(point.y()); }

/// Returns whether the painter can address a device position.
bool IsAddressable(QPointF point) {
  return std::fabs(point.x()) <= kLongestSide && std::fabs(point.y()) <= kLongestSide;
}

}  // namespace

ImageArea::ImageArea() { Resize(1, 1, 1); }

void ImageArea::Resize(int width, int height, double devicePixelRatio) {
  const auto pixels = [devicePixelRatio](int length) {
    const double exact = std::round(std::max(length, 1) * devicePixelRatio);
    return static_cast<int>(std::clamp(exact, 1.0, kLongestSide + 1));
  };
  ResizePixels(pixels(width), pixels(height), devicePixelRatio);
}

void ImageArea::ResizePixels(int width, int height, double devicePixelRatio) {
  QImage fresh;
  if (width <= kLongestSide && height <= kLongestSide) {
    fresh = QImage(width, height, QImage::Format_RGB32);
  }
  if (fresh.isNull()) {
    throw RunTimeError(ErrorKind::kOutOfMemory, "a picture of " + std::to_string(width) + " x " +
                                                    std::to_string(height) +
                                                    " pixels is too large");
  }
  if (painter_.isActive()) painter_.end();
  image_ = std::move(fresh);
  image_.setDevicePixelRatio(devicePixelRatio);
  ratio_ = devicePixelRatio;
  SetLineWidth(linePixels_);
  Clear();
}

const QImage& ImageArea::Image() const {
  if (painter_.isActive()) painter_.end();
  return image_;
}

void ImageArea::Open() {
  if (painter_.isActive()) return;
  target_ = QImage(image_.bits(), image_.width(), image_.height(), image_.bytesPerLine(),
                   image_.format());
  painter_.begin(&target_);
  painter_.setRenderHint(QPainter::Antialiasing);
  lastFill_ = {};
}

QPainter& ImageArea::Painter() {
  Open();
  const QPen& pen = painter_.pen();
  if (pen.color().rgb() != color_ || pen.width() != lineWidth_) {
    painter_.setPen(QPen(QColor(color_), lineWidth_));
  }
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
  const int width = box.right - box.left;
  for (int row = box.top; row < box.bottom; ++row) {
    std::fill_n(reinterpret_cast<QRgb*>(target_.scanLine(row)) + box.left, width, color);
  }
  lastFill_ = box;
  lastColor_ = color;
}

QPointF ImageArea::DevicePoint(double x, double y) const {
  const double column = (x - scale_.left) / (scale_.right - scale_.left) * image_.width();
  const double row = (scale_.top - y) / (scale_.top - scale_.bottom) * image_.height();
  return {std::clamp(column, -kFarAway, kFarAway), std::clamp(row, -kFarAway, kFarAway)};
}

QPoint ImageArea::OnPixel(QPointF point) const {
  return {Snap(point.x(), image_.width()), Snap(point.y(), image_.height())};
}

bool ImageArea::IsNear(QPointF point) const {
  return point.x() >= -kMargin && point.x() <= image_.width() + kMargin && point.y() >= -kMargin &&
         point.y() <= image_.height() + kMargin;
}

ImageArea::PixelBox ImageArea::Between(QPoint a, QPoint b) {
  return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::max(a.x(), b.x()),
          std::max(a.y(), b.y())};
}

void ImageArea::SetScale(const UserScale& scale) { scale_ = scale; }

void ImageArea::SetBackground(Color color) {
  background_ = qRgb(color.red, color.green, color.blue);
}

void ImageArea::Clear() { FillPixels({0, 0, image_.width(), image_.height()}, background_); }

void ImageArea::SetColor(Color color) { color_ = qRgb(color.red, color.green, color.blue); }

void ImageArea::SetLineWidth(int pixels) {
  linePixels_ = pixels;
  lineWidth_ = std::max(1, static_cast<int>(std::lround(pixels * ratio_)));
}

void ImageArea::FillStroke(PixelBox box) {
  const int before = lineWidth_ / 2;
  const int after = lineWidth_ - before;
  FillPixels({box.left - before, box.top - before, box.right + after, box.bottom + after}, color_);
}

void ImageArea::DrawLine(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const QPoint begin = OnPixel(from);
  const QPoint end = OnPixel(to);
  if (begin.x() == end.x() || begin.y() == end.y()) {
    FillStroke(Between(begin, end));
  } else if (IsNear(from) && IsNear(to)) {
    DrawSlantedLine(begin, end);
  } else {
    DrawClippedLine(from, to);
  }
}

void ImageArea::DrawClippedLine(QPointF from, QPointF to) {
  const QPointF step = to - from;
  double first = 0;
  double last = 1;
  // Narrows first..last to the part of the line where a coordinate is from -kMargin to upper.
  const auto isAnyLeft = [&](double start, double length, double upper) {
    if (length == 0) return start >= -kMargin && start <= upper;
    const auto [enter, leave] =
        std::minmax({(-kMargin - start) / length, (upper - start) / length});
    first = std::max(first, enter);
    last = std::min(last, leave);
    return first <= last;
  };
  if (isAnyLeft(from.x(), step.x(), image_.width() + kMargin) &&
      isAnyLeft(from.y(), step.y(), image_.height() + kMargin)) {
    DrawSlantedLine(OnPixel(from + first * step), OnPixel(from + last * step));
  }
}

void ImageArea::DrawSlantedLine(QPoint begin, QPoint end) {
  Painter().drawLine(begin + PenOffset(lineWidth_), end + PenOffset(lineWidth_));
}

void ImageArea::DrawBox(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const auto [left, top, right, bottom] = Between(OnPixel(from), OnPixel(to));
  FillStroke({left, top, right, top});
  FillStroke({left, bottom, right, bottom});
  FillStroke({left, top, left, bottom});
  FillStroke({right, top, right, bottom});
}

void ImageArea::FillBox(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (IsPoint(from) && IsPoint(to)) FillPixels(Between(OnPixel(from), OnPixel(to)), color_);
}

void ImageArea::DrawCircle(double x, double y, double radius) {
  const QPointF center = DevicePoint(x, y);
  const double extent = std::fabs(radius / (scale_.right - scale_.left)) * image_.width();
  if (!IsAddressable(center) || !(extent < kLongestSide)) return;
  Painter().drawEllipse(OnPixel(center) + PenOffset(lineWidth_), extent, extent);
}

void ImageArea::SetTextSize(double width, double height, std::string_view sample) {
  const double boxWidth = std::fabs(width / (scale_.right - scale_.left)) * image_.width();
  const double boxHeight = std::fabs(height / (scale_.top - scale_.bottom)) * image_.height();
  const QString text = QString::fromUtf8(sample);
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
  if (!IsAddressable(corner)) return;
  Painter().setFont(font_);
  painter_.drawText(
      QPointF(std::round(corner.x()), std::round(corner.y() + QFontMetricsF(font_).ascent())),
      QString::fromUtf8(text));
}

}  // namespace quillane
