// Applied loads and supports as symbols at their nodes, sized from DomainWidth.
#pragma once

#include "display/drawing_area.h"
#include "model/model.h"

namespace quillane {

/// Draws an arrow for each component of every load, all of one length, from the node in the
/// direction of the force; a zero component of a loaded node is a dot. Throws RunTimeError
/// (subscript) if NodeLoad or NodeXY have fewer nodes than NodeCount.
void DrawLoads(DrawingArea& picCanvas, const Model& model);

/// Draws the symbol of every fixed displacement (code 1 of NodeFreedom). Throws likewise.
void DrawSupports(DrawingArea& picCanvas, const Model& model);

}  // namespace quillane
