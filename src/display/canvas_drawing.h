// The drawing of the model on the canvas.
#pragma once

#include <optional>

#include "display/color_scale.h"
#include "display/drawing_area.h"
#include "display/grid.h"
#include "display/symbols.h"
#include "model/model.h"

namespace quillane {

struct ValueRange {
  double smallest = 0;
  double largest = 0;
};

struct DrawingStyle {
  bool grid = true;                 ///< axes, grid lines and the frames of cells
  std::optional<ValueRange> range;  ///< of a map's colours; by default that of the values
};

/// Redraws the canvas from the model: background, design domain, cells by state, loads, supports,
/// axes and grid, in the scale of the model's view. Throws RunTimeError: overflow if the grid has
/// too many lines, subscript if the mesh does not fit the grid.
void DrawCanvas(DrawingArea& picCanvas, const Model& model, const DrawingStyle& style = {});

/// Redraws what lies below a result map: the canvas drawing on this background, without material,
/// loads and supports. Throws as DrawCanvas.
void DrawEmptyDomain(DrawingArea& picCanvas, const Model& model, Color background,
                     const DrawingStyle& style);

/// Fills the box between the first and third node of an element, from 1, in the drawing colour.
/// Throws RunTimeError (subscript) if there is no such element or node.
void FillElement(DrawingArea& picCanvas, const Model& model, int element);

/// Clears both pictures: background, axes and grid on the canvas, an unlabelled stress legend.
/// Leaves the model as it is.
void picCanvasClear(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model);

/// Marks the first corner of a new design domain, x, y in mm, with a circle and a cross.
void MarkDomainCorner(DrawingArea& picCanvas, const Model& model, double x, double y);

/// Highlights the element, from 1, that is the first corner of a rectangle of cells. Throws as
/// FillElement.
void HighlightCell(DrawingArea& picCanvas, const Model& model, int element);

}  // namespace quillane
