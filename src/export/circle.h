// Circles and clockwise arcs, as holes in the material have them.
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

/// The coordinates (mm) at which the centre of a circle has to lie.
struct FixedCentre {
  std::optional<double> x, y;
};

/// Returns the circle that fits the points best: least squares of their distances from it. There
/// are at least three points, not all on one line; otherwise the result is not finite.
Circle FitCircle(const std::vector<Point>& points, const FixedCentre& fixed = {});

}  // namespace quillane
