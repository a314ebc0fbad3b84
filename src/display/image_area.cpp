// Drawing on a QImage in device pixels.
#include "display/image_area.h"

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
  painter_.end();
  image_ = std::move(fresh);
  image_.setDevicePixelRatio(devicePixelRatio);
  ratio_ = devicePixelRatio;
  SetLineWidth(linePixels_);
  Clear();
}

const QImage& ImageArea::Image() const {
  painter_.end();
  return image_;
}

QPainter& ImageArea::Painter() {
  if (!painter_.isActive()) {
    target_ = QImage(image_.bits(), image_.width(), image_.height(), image_.bytesPerLine(),
                     image_.format());
    painter_.begin(&target_);
    painter_.setRenderHint(QPainter::Antialiasing);
    lastFill_ = {};
  }
  return painter_;
}

void ImageArea::FillPixels(int left, int top, int right, int bottom, QColor color) {
  const QRect area = QRect(left, top, right - left, bottom - top).intersected(image_.rect());
  QPainter& painter = Painter();
  if (area.isEmpty() || (area == lastFill_ && color == lastColor_)) return;
  painter.fillRect(area, color);
  lastFill_ = area;
  lastColor_ = color;
}

QPointF ImageArea::DevicePoint(double x, double y) const {
  const double column = (x - scale_.left) / (scale_.right - scale_.left) * image_.width();
  const double row = (scale_.top - y) / (scale_.top - scale_.bottom) * image_.height();
  return {std::clamp(column, -kFarAway, kFarAway), std::clamp(row, -kFarAway, kFarAway)};
}

void ImageArea::SetScale(const UserScale& scale) { scale_ = scale; }

void ImageArea::SetBackground(Color color) {
  background_ = QColor(color.red, color.green, color.blue);
}

void ImageArea::Clear() { FillPixels(0, 0, image_.width(), image_.height(), background_); }

void ImageArea::SetColor(Color color) { color_ = QColor(color.red, color.green, color.blue); }

void ImageArea::SetLineWidth(int pixels) {
  linePixels_ = pixels;
  lineWidth_ = std::max(1, static_cast<int>(std::lround(pixels * ratio_)));
}

void ImageArea::DrawLine(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const auto [left, right] =
      std::minmax({Snap(from.x(), image_.width()), Snap(to.x(), image_.width())});
  const auto [top, bottom] =
      std::minmax({Snap(from.y(), image_.height()), Snap(to.y(), image_.height())});
  if (left != right && top != bottom) {
    DrawSlantedLine(from, to);
    return;
  }
  const int before = lineWidth_ / 2;
  const int after = lineWidth_ - before;
  FillPixels(left - before, top - before, right + after, bottom + after, color_);
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
  lastFill_ = {};
  Painter().setPen(QPen(color_, lineWidth_));
  painter_.drawLine(onPixel(from + first * step), onPixel(from + last * step));
}

void ImageArea::DrawBox(double x1, double y1, double x2, double y2) {
  DrawLine(x1, y1, x2, y1);
  DrawLine(x1, y2, x2, y2);
  DrawLine(x1, y1, x1, y2);
  DrawLine(x2, y1, x2, y2);
}

void ImageArea::FillBox(double x1, double y1, double x2, double y2) {
  const QPointF from = DevicePoint(x1, y1);
  const QPointF to = DevicePoint(x2, y2);
  if (!IsPoint(from) || !IsPoint(to)) return;
  const auto [left, right] =
      std::minmax({Snap(from.x(), image_.width()), Snap(to.x(), image_.width())});
  const auto [top, bottom] =
      std::minmax({Snap(from.y(), image_.height()), Snap(to.y(), image_.height())});
  FillPixels(left, top, right, bottom, color_);
}

void ImageArea::DrawCircle(double x, double y, double radius) {
  const QPointF center = DevicePoint(x, y);
  const double extent = std::fabs(radius / (scale_.right - scale_.left)) * image_.width();
  const bool near = IsPoint(center) && std::fabs(center.x()) < kLongestSide &&
                    std::fabs(center.y()) < kLongestSide && extent < kLongestSide;
  if (!near) return;
  const double offset = lineWidth_ % 2 == 0 ? 0.0 : 0.5;
  lastFill_ = {};
  Painter().setPen(QPen(color_, lineWidth_));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawEllipse(QPointF(Snap(center.x(), image_.width()) + offset,
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
  lastFill_ = {};
  Painter().setPen(color_);
  painter_.setFont(font_);
  painter_.drawText(
      QPointF(std::round(corner.x()), std::round(corner.y() + QFontMetricsF(font_).ascent())),
      QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace quillane
