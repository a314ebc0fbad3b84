#include "display/symbols.h"

#include "display/palette.h"

namespace quillane {
namespace {

int Sgn(double value) { return (value > 0) - (value < 0); }

/// Deliberately draws the shaft twice, before each half of the head; so does DrawArrowY.
void DrawArrowX(DrawingArea& picCanvas, double x, double y, double length) {
  const double tip = x + length;
  picCanvas.DrawLine(x, y, tip, y);
  picCanvas.DrawLine(tip, y, tip - length / 3, y + length / 5);
  picCanvas.DrawLine(x, y, tip, y);
  picCanvas.DrawLine(tip, y, tip - length / 3, y - length / 5);
}

void DrawArrowY(DrawingArea& picCanvas, double x, double y, double length) {
  const double tip = y + length;
  picCanvas.DrawLine(x, y, x, tip);
  picCanvas.DrawLine(x, tip, x + length / 5, tip - length / 3);
  picCanvas.DrawLine(x, y, x, tip);
  picCanvas.DrawLine(x, tip, x - length / 5, tip - length / 3);
}

double SupportSize(const Model& model) { return static_cast<double>(model.DomainWidth) / 100; }

void SetSupportPen(DrawingArea& picCanvas) {
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kBlue);
}

}  // namespace

void drawSymbolFx(DrawingArea& picCanvas, const Model& model, double x, double y) {
  const double h = SupportSize(model);
  SetSupportPen(picCanvas);
  picCanvas.DrawLine(x, y, x - h, y + h / 2);
  picCanvas.DrawLine(x - h, y + h / 2, x - h, y - h / 2);
  picCanvas.DrawLine(x - h, y - h / 2, x, y);
  picCanvas.DrawLine(x - 4 * h / 3, y - h / 2, x - 4 * h / 3, y + h / 2);
}

void drawSymbolFy(DrawingArea& picCanvas, const Model& model, double x, double y) {
  const double h = SupportSize(model);
  SetSupportPen(picCanvas);
  picCanvas.DrawLine(x, y, x - h / 2, y - h);
  picCanvas.DrawLine(x - h / 2, y - h, x + h / 2, y - h);
  picCanvas.DrawLine(x + h / 2, y - h, x, y);
  picCanvas.DrawLine(x - h / 2, y - 4 * h / 3, x + h / 2, y - 4 * h / 3);
}

void DrawLoads(DrawingArea& picCanvas, const Model& model) {
  const double length = static_cast<double>(model.DomainWidth) / 30;
  picCanvas.SetColor(kMagenta);
  picCanvas.SetLineWidth(2);
  for (int k = 1; k <= model.NodeCount; ++k) {
    const int signX = Sgn(model.NodeLoad(k, 1));
    const int signY = Sgn(model.NodeLoad(k, 2));
    if (signX == 0 && signY == 0) continue;
    const double x = model.NodeXY(k, 1);
    const double y = model.NodeXY(k, 2);
    DrawArrowX(picCanvas, x, y, signX * length);
    DrawArrowY(picCanvas, x, y, signY * length);
  }
}

void DrawSupports(DrawingArea& picCanvas, const Model& model) {
  for (int k = 1; k <= model.NodeCount; ++k) {
    const double x = model.NodeXY(k, 1);
    const double y = model.NodeXY(k, 2);
    if (model.NodeFreedom(k, 1) == 1) drawSymbolFx(picCanvas, model, x, y);
    if (model.NodeFreedom(k, 2) == 1) drawSymbolFy(picCanvas, model, x, y);
  }
}

}  // namespace quillane
