#include "image/picture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "display/canvas_layout.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "image/image_area.h"

namespace quillane {
namespace {

void DrawKind(ImageArea& canvas, ImageArea& legend, const Model& model,
              const PictureOptions& options) {
  switch (options.kind) {
    case PictureKind::kModel:
      DrawCanvas(canvas, model, options.style);
      DrawColorBar(legend, kStressTitle);
      break;
    case PictureKind::kStress:
      DrawStressMap(canvas, legend, model, options.style);
      break;
    case PictureKind::kPotential:
      DrawNeuronMap(canvas, legend, model, options.style);
      break;
  }
}

/// Writes the label in the upper left corner, a thirtieth of the canvas high but at least 14
/// pixels.
void DrawLabel(ImageArea& canvas, const std::string& label, int canvasHeight) {
  const double height = std::max(1.0 / 30, 14.0 / canvasHeight);
  canvas.SetScale({0, 1, 1, 0});
  canvas.SetColor(kBlue);
  canvas.SetTextSize(0.9, height, label);
  canvas.DrawText(0.02, 1 - height / 2, label);
}

/// Returns the default size, or the part of it that a fitted domain and its legend need, in even
/// numbers, as many video players require.
PictureSize SizeFor(const Model& model, const PictureOptions& options) {
  constexpr PictureSize kWhole;
  constexpr int kLeastHeight = 240;      // below, the legend is illegible
  constexpr double kLeastAspect = 0.25;  // width of the canvas over its height
  const double width = std::fabs(double{model.DomainX2} - double{model.DomainX1});
  const double height = std::fabs(double{model.DomainY2} - double{model.DomainY1});
  if (!options.fitDomain || !(width > 0) || !(height > 0)) return kWhole;
  const CanvasLayout whole = LayOutPicture(kWhole.width, kWhole.height);
  const double legend = 1.0 * whole.colorBarWidth / whole.canvasHeight;
  const auto even = [](double length) { return 2 * static_cast<int>(std::ceil(length / 2)); };
  const double needed = std::min(1.0 * kWhole.height, kWhole.width / (width / height + legend));
  const int picked = std::max(kLeastHeight, even(needed));
  const double across = std::max(width / height, kLeastAspect) * picked + legend * picked;
  return {std::min(kWhole.width, even(across)), picked};
}

/// Joins two pictures pixel by pixel, whatever their device pixel ratio.
QImage SideBySide(QImage left, QImage right) {
  left.setDevicePixelRatio(1);
  right.setDevicePixelRatio(1);
  QImage both(left.width() + right.width(), left.height(), QImage::Format_RGB32);
  QPainter painter(&both);
  painter.drawImage(0, 0, left);
  painter.drawImage(left.width(), 0, right);
  return both;
}

}  // namespace

QImage RenderPicture(const Model& model, const PictureOptions& options) {
  const auto [width, height] = options.size ? *options.size : SizeFor(model, options);
  const CanvasLayout layout = LayOutPicture(width, height);
  const double growth = std::max(1.0, std::min(width / 1200.0, height / 800.0));
  ImageArea canvas;
  ImageArea legend;
  legend.SetBackground(kWhite);
  canvas.ResizePixels(layout.canvasWidth, layout.canvasHeight, growth);
  legend.ResizePixels(layout.colorBarWidth, layout.canvasHeight, growth);

  Model shown = model;
  if (options.fitDomain) FrameDomain(shown, layout.canvasWidth, layout.canvasHeight);
  FitView(shown, layout.canvasWidth, layout.canvasHeight);
  DrawKind(canvas, legend, shown, options);
  if (!options.label.empty()) DrawLabel(canvas, options.label, layout.canvasHeight);
  return SideBySide(canvas.Image(), legend.Image());
}

}  // namespace quillane
