#include "image/picture.h"

#include <QPainter>

#include "display/canvas_drawing.h"
#include "display/canvas_layout.h"
#include "display/palette.h"
#include "display/result_maps.h"
#include "display/view.h"
#include "image/image_area.h"

namespace quillane {
namespace {

void DrawKind(ImageArea& canvas, ImageArea& legend, const Model& model, PictureKind kind) {
  const ColorTable table = MakeColorTable();
  switch (kind) {
    case PictureKind::kModel:
      DrawCanvas(canvas, model);
      DrawColorBar(legend, table, kStressTitle);
      break;
    case PictureKind::kStress:
      DrawStressMap(canvas, legend, model, table);
      break;
    case PictureKind::kPotential:
      DrawNeuronMap(canvas, legend, model, table);
      break;
  }
}

QImage SideBySide(const QImage& left, const QImage& right) {
  QImage both(left.width() + right.width(), left.height(), QImage::Format_RGB32);
  QPainter painter(&both);
  painter.drawImage(0, 0, left);
  painter.drawImage(left.width(), 0, right);
  return both;
}

}  // namespace

QImage RenderPicture(const Model& model, PictureKind kind, int width, int height) {
  const CanvasLayout layout = LayOutPicture(width, height);
  ImageArea canvas;
  ImageArea legend;
  legend.SetBackground(kWhite);
  canvas.Resize(layout.canvasWidth, layout.canvasHeight, 1);
  legend.Resize(layout.colorBarWidth, layout.canvasHeight, 1);

  Model shown = model;
  FitView(shown, layout.canvasWidth, layout.canvasHeight);
  DrawKind(canvas, legend, shown, kind);
  return SideBySide(canvas.Image(), legend.Image());
}

}  // namespace quillane
