#include "display/canvas_drawing.h"

#include "display/palette.h"
#include "display/view.h"

namespace quillane {
namespace {

void ClearCanvas(DrawingArea& picCanvas, const Model& model, Color background) {
  picCanvas.SetBackground(background);
  picCanvas.Clear();
  picCanvas.SetScale(CanvasScale(model));
  picCanvas.SetLineWidth(1);
}

void DrawDomainBox(DrawingArea& picCanvas, const Model& model) {
  if (model.DomainDefined == 0) return;
  picCanvas.SetColor(kWhite);
  picCanvas.FillBox(double{model.DomainX1}, double{model.DomainY1}, double{model.DomainX2},
                    double{model.DomainY2});
}

struct ElementBox {
  double x1, y1, x2, y2;
};

ElementBox BoxOf(const Model& model, int element) {
  const int first = model.ElementNodes(element, 1);
  const int third = model.ElementNodes(element, 3);
  return {model.NodeXY(first, 1), model.NodeXY(first, 2), model.NodeXY(third, 1),
          model.NodeXY(third, 2)};
}

void FrameElement(DrawingArea& picCanvas, const Model& model, int element) {
  const ElementBox box = BoxOf(model, element);
  picCanvas.SetColor(kCyan);
  picCanvas.DrawBox(box.x1, box.y1, box.x2, box.y2);
}

void DrawCells(DrawingArea& picCanvas, const Model& model, Integer state, Color fill,
               const DrawingStyle& style) {
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      if (model.CellState(i, j) != state) continue;
      const int element = ElementOfCell(model, i, j);
      picCanvas.SetColor(fill);
      FillElement(picCanvas, model, element);
      if (style.grid) FrameElement(picCanvas, model, element);
    }
  }
}

}  // namespace

void DrawCanvas(DrawingArea& picCanvas, const Model& model, const DrawingStyle& style) {
  ClearCanvas(picCanvas, model, kBackground);
  DrawDomainBox(picCanvas, model);
  DrawCells(picCanvas, model, kCellDesign, kLightGreen, style);
  DrawCells(picCanvas, model, kCellNonDesign, kLightCyan, style);
  DrawCells(picCanvas, model, kCellCutOut, kBackground, style);
  DrawLoads(picCanvas, model);
  DrawSupports(picCanvas, model);
  if (style.grid) drawGrid(picCanvas, model);
}

void DrawEmptyDomain(DrawingArea& picCanvas, const Model& model, Color background,
                     const DrawingStyle& style) {
  ClearCanvas(picCanvas, model, background);
  DrawDomainBox(picCanvas, model);
  DrawCells(picCanvas, model, kCellCutOut, kBackground, style);
  if (style.grid) drawGrid(picCanvas, model);
}

void FillElement(DrawingArea& picCanvas, const Model& model, int element) {
  const ElementBox box = BoxOf(model, element);
  picCanvas.FillBox(box.x1, box.y1, box.x2, box.y2);
}

void picCanvasClear(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model) {
  ClearCanvas(picCanvas, model, kBackground);
  drawGrid(picCanvas, model);
  DrawColorBar(picColorBar, kStressTitle);
}

void MarkDomainCorner(DrawingArea& picCanvas, const Model& model, double x, double y) {
  const double radius = double{model.DomainWidth} / 200;
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kLightRed);
  picCanvas.DrawCircle(x, y, radius);
  picCanvas.DrawLine(x - 2 * radius, y, x + 2 * radius, y);
  picCanvas.DrawLine(x, y - 2 * radius, x, y + 2 * radius);
}

void HighlightCell(DrawingArea& picCanvas, const Model& model, int element) {
  picCanvas.SetLineWidth(1);
  picCanvas.SetColor(kRed);
  FillElement(picCanvas, model, element);
  FrameElement(picCanvas, model, element);
}

}  // namespace quillane
