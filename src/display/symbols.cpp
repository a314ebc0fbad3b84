#include "display/symbols.h"

#include "display/palette.h"

namespace quillane {
namespace {

int Sgn(double value) { return (value > 0) - (value < 0); }

/// Draws an arrow along x or y; the other length is 0. Deliberately draws the shaft twice, before
/// each half of the head.
void DrawArrow(DrawingArea& picCanvas, double x, double y, double dx, double dy) {
  const double tipX = x + dx, tipY = y + dy;
  for (const double side : {5, -5}) {
    picCanvas.DrawLine(x, y, tipX, tipY);
    picCanvas.DrawLine(tipX, tipY, tipX - dx / 3 + dy / side, tipY - dy / 3 + dx / side);
  }
}

/// Draws a support in x: a triangle of height h left of the node and its ground line.
void drawSymbolFx(DrawingArea& picCanvas, double x, double y, double h) {
  picCanvas.DrawLine(x, y, x - h, y + h / 2);
  picCanvas.DrawLine(x - h, y + h / 2, x - h, y - h / 2);
  picCanvas.DrawLine(x - h, y - h / 2, x, y);
  picCanvas.DrawLine(x - 4 * h / 3, y - h / 2, x - 4 * h / 3, y + h / 2);
}

/// Draws a support in y: the same symbol below the node.
void drawSymbolFy(DrawingArea& picCanvas, double x, double y, double h) {
  picCanvas.DrawLine(x, y, x - h / 2, y - h);
  picCanvas.DrawLine(x - h / 2, y - h, x + h / 2, y - h);
  picCanvas.DrawLine(x + h / 2, y - h, x, y);
  picCanvas.DrawLine(x - h / 2, y - 4 * h / 3, x + h / 2, y - 4 * h / 3);
}

}  // namespace

void DrawLoads(DrawingArea& picCanvas, const Model& model) {
  const double length = double{model.DomainWidth} / 30;
  picCanvas.SetColor(kMagenta);
  picCanvas.SetLineWidth(2);
  for (int k = 1; k <= model.NodeCount; ++k) {
    const int signX = Sgn(model.NodeLoad(k, 1));
    const int signY = Sgn(model.NodeLoad(k, 2));
    if (signX == 0 && signY == 0) continue;
    const double x = model.NodeXY(k, 1);
    const double y = model.NodeXY(k, 2);
    DrawArrow(picCanvas, x, y, signX * length, 0);
    DrawArrow(picCanvas, x, y, 0, signY * length);
  }
}

void DrawSupports(DrawingArea& picCanvas, const Model& model) {
  const double height = double{model.DomainWidth} / 100;
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kBlue);
  for (int k = 1; k <= model.NodeCount; ++k) {
    const double x = model.NodeXY(k, 1);
    const double y = model.NodeXY(k, 2);
    if (model.NodeFreedom(k, 1) == 1) drawSymbolFx(picCanvas, x, y, height);
    if (model.NodeFreedom(k, 2) == 1) drawSymbolFy(picCanvas, x, y, height);
  }
}

}  // namespace quillane
