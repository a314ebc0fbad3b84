// Measures of an outline that matter for its manufacture.
#pragma once

#include <optional>
#include <vector>

#include "export/outline.h"

namespace quillane {

/// Returns the length (mm) of the shortest segment or arc of an outline.
double ShortestSegment(const std::vector<Contour>& outline);

/// The narrowest place of the material.
struct Neck {
  double width = 0;  ///< mm
  Point middle;      ///< mm
};

/// Returns the smallest disc in the material that touches the edge at both ends of a diameter,
/// which is the width of the neck; nothing if there is no such disc, as in a triangle. A convex
/// corner or a wedge is therefore no neck. Arcs count as chords within 0.002 of a cell's edge.
/// cell: mm.
std::optional<Neck> NarrowestNeck(const std::vector<Contour>& outline, double cell);

}  // namespace quillane
