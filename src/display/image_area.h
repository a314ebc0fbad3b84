// A drawing area on an image in memory, exact to the pixel at every device pixel ratio.
#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <string_view>

#include "display/drawing_area.h"

namespace quillane {

/// Boxes that share an edge share it to the pixel: no gap, no overlap. Upright and level lines and
/// outlines cover whole pixels, slanted lines and circles are smoothed. Needs a QGuiApplication for
/// its text. Starts as one pixel.
class ImageArea : public DrawingArea {
 public:
  ImageArea();
  ~ImageArea() override;
  ImageArea(const ImageArea&) = delete;
  ImageArea& operator=(const ImageArea&) = delete;

  /// A fresh picture of width x height logical pixels in the background colour; sizes below 1 count
  /// as 1. Throws RunTimeError (out of memory) for a picture too large to hold.
  void Resize(int width, int height, double devicePixelRatio);

  /// The picture so far, its device pixel ratio set.
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
  QPainter& Painter();
  void FillPixels(int left, int top, int right, int bottom, QColor color);
  QPointF DevicePoint(double x, double y) const;
  void DrawSlantedLine(QPointF from, QPointF to);

  QImage image_;
  double ratio_ = 1;
  UserScale scale_;
  QColor background_ = Qt::white;
  QColor color_ = Qt::black;
  int lineWidth_ = 1;  // device pixels
  int linePixels_ = 1;
  QFont font_;
  QRect lastFill_;  // what FillPixels last did, while nothing else was drawn since
  QColor lastColor_;
  QImage target_;             // the bits of image_ at a ratio of 1
  mutable QPainter painter_;  // on target_, open between two looks at the picture
};

}  // namespace quillane
