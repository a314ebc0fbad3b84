// Edits of the design domain by presses: its rectangle, and the material of rectangles of cells.
#pragma once

#include "model/model.h"

namespace quillane {

/// What a press did to the model, for the window to show.
enum class PressResult {
  kNothing,
  kFirstCorner,  ///< the first corner is taken, the model's contents stand
  kEdited,       ///< the model changed and is to be drawn again
  kOutside,      ///< refused: not in the design domain
  kBadGrid,      ///< refused: no cells, or more nodes or elements than can be counted
};

/// What is remembered between the two presses of a rectangle.
struct Corners {
  Single standingX = 0, standingY = 0;  ///< DomainX1, DomainY1 before a domain's first press, mm
  Integer column1 = 0, row1 = 0;        ///< cell of the first press, from 1
  Integer column2 = 0, row2 = 0;        ///< cell of the second press, from 1
};

/// Presses at (x, y), mm. The second one builds the domain between the grid points nearest to both
/// presses, empties everything, and ends its own edit mode. A grid that cannot be is refused: the
/// old domain stands and the next press is a first one again.
PressResult DesignDomainSet(Model& model, Corners& corners, Single x, Single y);

/// Presses at (x, y), mm, in two cells: the second one gives every cell of their rectangle its new
/// state: kCellDesign, kCellNonDesign, kCellEmpty or kCellCutOut, in the order below. A press
/// outside the domain is refused and the press before it kept.
PressResult AddDesignElements(Model& model, Corners& corners, Single x, Single y);
PressResult AddNonDesignElements(Model& model, Corners& corners, Single x, Single y);
PressResult RemoveElements(Model& model, Corners& corners, Single x, Single y);
PressResult DeleteDesignDomain(Model& model, Corners& corners, Single x, Single y);

}  // namespace quillane
