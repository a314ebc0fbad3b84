#include "image/picture.h"

#include <QPainter>
#include <algorithm>

#include "display/canvas_drawing.h"
#include "display/canvas_layout.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "image/image_area.h"

namespace quillane {
namespace {

void DrawKind(ImageArea& canvas, ImageArea& legend, const Model& model,
              const PictureOptions& options) {
  const ColorTable table = MakeColorTable();
  switch (options.kind) {
    case PictureKind::kModel:
      DrawCanvas(canvas, model, options.style);
      DrawColorBar(legend, table, kStressTitle);
      break;
    case PictureKind::kStress:
      DrawStressMap(canvas, legend, model, table, options.style);
      break;
    case PictureKind::kPotential:
      DrawNeuronMap(canvas, legend, model, table, options.style);
      break;
  }
}

/// Draws it into the upper left corner, a thirtieth of the canvas high.
void DrawLabel(ImageArea& canvas, const std::string& label) {
  constexpr double kHeight = 1.0 / 30;
  canvas.SetScale({0, 1, 1, 0});
  canvas.SetColor(kBlue);
  canvas.SetTextSize(0.9, kHeight, label);
  canvas.DrawText(0.02, 1 - kHeight / 2, label);
}

/// Copies pixel by pixel, whatever the device pixel ratio.
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
  const CanvasLayout layout = LayOutPicture(options.width, options.height);
  const double growth = std::max(1.0, std::min(options.width / 1200.0, options.height / 800.0));
  ImageArea canvas;
  ImageArea legend;
  legend.SetBackground(kWhite);
  canvas.ResizePixels(layout.canvasWidth, layout.canvasHeight, growth);
  legend.ResizePixels(layout.colorBarWidth, layout.canvasHeight, growth);

  Model shown = model;
  if (options.fitDomain) FrameDomain(shown, layout.canvasWidth, layout.canvasHeight);
  FitView(shown, layout.canvasWidth, layout.canvasHeight);
  DrawKind(canvas, legend, shown, options);
  if (!options.label.empty()) DrawLabel(canvas, options.label);
  return SideBySide(canvas.Image(), legend.Image());
}

}  // namespace quillane
