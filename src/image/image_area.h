// A drawing area on an image in memory, exact to the pixel at every device pixel ratio.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <string_view>

#include "display/drawing_area.h"

namespace quillane {

/// Boxes that share an edge share it to the pixel: no gap, no overlap. Vertical and horizontal
/// lines and outlines cover whole pixels; slanted lines and circles are antialiased. Needs a
/// QGuiApplication for its text. Starts as one pixel.
class ImageArea final : public DrawingArea {
 public:
  ImageArea();

  /// Replaces the picture by one of width x height logical pixels in the background colour; sizes
  /// below 1 count as 1. Throws RunTimeError (out of memory) for a picture too large to hold.
  void Resize(int width, int height, double devicePixelRatio);

  /// Does the same with width x height device pixels, each at least 1.
  void ResizePixels(int width, int height, double devicePixelRatio);

  /// Returns the picture with its device pixel ratio set.
  const QImage& Image() const;

  void SetScale(const UserScale& scale) override;
  UserScale Scale() const override { return scale_; }
  void SetBackground(Color color) override;
  void Clear() override;
  void SetColor(Color color) override;
  void SetLineWidth(int pixels) override;
  void DrawLine(double x1, double y1, double x2, double y2) override;
  void DrawBox(double x1, double y1, double x2, double y2) override;
  void FillBox(double x1, double y1, double x2, double y2) override;
  void DrawCircle(double x, double y, double radius) override;
  void SetTextSize(double width, double height, std::string_view sample) override;
  void DrawText(double x, double y, std::string_view text) override;

 private:
  /// Pixels left..right - 1, top..bottom - 1.
  struct PixelBox {
    int left, top, right, bottom;
    friend bool operator==(const PixelBox&, const PixelBox&) = default;
  };

  void Open();
  QPainter& Painter();
  void FillPixels(PixelBox box, QRgb color);
  /// Returns the position of user coordinates in device pixels.
  QPointF DevicePoint(double x, double y) const;
  /// Returns the pixel corner nearest to a position in device pixels.
  QPoint OnPixel(QPointF point) const;
  /// Returns whether a position in device pixels lies in the picture or its margin.
  bool IsNear(QPointF point) const;
  /// Returns the box between two opposite corners.
  static PixelBox Between(QPoint a, QPoint b);
  /// Fills a line of the current width along a box without width or height.
  void FillStroke(PixelBox box);
  /// Draws a slanted line, in device pixels, of which an end lies far outside the picture.
  void DrawClippedLine(QPointF from, QPointF to);
  /// Draws a slanted line between pixel corners in or near the picture.
  void DrawSlantedLine(QPoint begin, QPoint end);

  QImage image_;
  double ratio_ = 1;
  UserScale scale_;
  QRgb background_ = qRgb(255, 255, 255);
  QRgb color_ = qRgb(0, 0, 0);
  int linePixels_ = 1;  // logical
  int lineWidth_ = 1;   // device pixels
  QFont font_;
  // What FillPixels filled last, which need not be filled again until anything else is drawn: the
  // finest grid has 20 lines to a pixel and takes 5 ms instead of 85 ms.
  PixelBox lastFill_{};
  QRgb lastColor_ = 0;
  QImage target_;             // the pixels of image_ at a ratio of 1, while the painter is open
  mutable QPainter painter_;  // on target_; open until the picture is asked for
};

}  // namespace quillane
