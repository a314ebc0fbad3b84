// Circles and the clockwise arcs that bound holes in the material.
#pragma once

#include <optional>
#include <vector>

#include "export/point.h"

namespace quillane {

struct Circle {
  Point centre;       ///< mm
  double radius = 0;  ///< mm
};

/// Returns the angle about the centre from a clockwise to b, in radians, above 0 and at most 2 pi.
double ClockwiseAngle(const Circle& circle, Point a, Point b);

/// Returns the points between a and b that divide the clockwise arc from a to b evenly, so that no
/// chord lies farther than `deviation` (mm) from the arc. a and b lie on the circle.
std::vector<Point> ArcPoints(const Circle& circle, Point a, Point b, double deviation);

/// Coordinates (mm) that the centre of a circle must have; nothing: free.
struct FixedCentre {
  std::optional<double> x, y;
};

/// Returns the circle with the least squares of the points' distances from it. Requires at least
/// three points that are not on one line; otherwise the result is not finite.
Circle FitCircle(const std::vector<Point>& points, const FixedCentre& fixed = {});

}  // namespace quillane
