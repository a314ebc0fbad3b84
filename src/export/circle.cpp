#include "export/circle.h"

#include <numbers>

namespace quillane {
namespace {

constexpr int kFitSteps = 20;

Point Mean(const std::vector<Point>& points) {
  Point sum;
  for (const Point& p : points) sum = sum + p;
  return 1.0 / static_cast<double>(points.size()) * sum;
}

/// The normal equations of least squares in two unknowns.
struct NormalEquations {
  double xx = 0, xy = 0, yy = 0;
  Point right;

  void Add(Point d, double wanted) {
    xx += d.x * d.x, xy += d.x * d.y, yy += d.y * d.y;
    right = right + wanted * d;
  }
  Point Solution() const {
    const double determinant = xx * yy - xy * xy;
    return {(right.x * yy - right.y * xy) / determinant,
            (right.y * xx - right.x * xy) / determinant};
  }
};

/// Returns the circle with the least sum of (|p - centre|^2 - radius^2)^2. The mean of the points
/// is the origin.
Circle AlgebraicFit(const std::vector<Point>& points) {
  NormalEquations sums;
  for (const Point& p : points) sums.Add(p, Dot(p, p) / 2);
  const Point centre = sums.Solution();
  const double meanSquare = (sums.xx + sums.yy) / static_cast<double>(points.size());
  return {centre, std::sqrt(Dot(centre, centre) + meanSquare)};
}

/// Takes one Gauss-Newton step for the sum of (|p - centre| - radius)^2 in the coordinates of the
/// centre that are not fixed. The radius is the mean of the distances, which leaves two normal
/// equations.
Circle Improved(const Circle& circle, const std::vector<Point>& points, const FixedCentre& fixed) {
  std::vector<Point> towards;  // unit vectors
  double radius = 0;
  for (const Point& p : points) {
    const double distance = Length(p - circle.centre);
    towards.push_back(1 / distance * (p - circle.centre));
    radius += distance / static_cast<double>(points.size());
  }
  const Point mean = Mean(towards);
  NormalEquations sums;
  for (std::size_t k = 0; k < points.size(); ++k) {
    const Point d = {fixed.x ? 0 : towards[k].x - mean.x, fixed.y ? 0 : towards[k].y - mean.y};
    sums.Add(d, Length(points[k] - circle.centre) - radius);
  }
  if (fixed.x) sums.xx = 1;
  if (fixed.y) sums.yy = 1;
  const Point shift = sums.Solution();
  return {circle.centre + shift, radius - Dot(mean, shift)};
}

}  // namespace

double ClockwiseAngle(const Circle& circle, Point a, Point b) {
  const Point from = a - circle.centre, to = b - circle.centre;
  const double angle = -std::atan2(Cross(from, to), Dot(from, to));
  return angle > 0 ? angle : angle + 2 * std::numbers::pi;
}

std::vector<Point> ArcPoints(const Circle& circle, Point a, Point b, double deviation) {
  const double angle = ClockwiseAngle(circle, a, b);
  const double largest = 2 * std::acos(std::max(0.0, 1 - deviation / circle.radius));
  const int parts = static_cast<int>(std::ceil(angle / largest));
  const Point from = a - circle.centre;
  std::vector<Point> points;
  for (int k = 1; k < parts; ++k) {
    const double turn = -angle * k / parts, c = std::cos(turn), s = std::sin(turn);
    points.push_back(circle.centre + Point{c * from.x - s * from.y, s * from.x + c * from.y});
  }
  return points;
}

Circle FitCircle(const std::vector<Point>& points, const FixedCentre& fixed) {
  const Point middle = Mean(points);
  std::vector<Point> centred = points;
  for (Point& p : centred) p = p - middle;
  Circle circle = AlgebraicFit(centred);
  if (fixed.x) circle.centre.x = *fixed.x - middle.x;
  if (fixed.y) circle.centre.y = *fixed.y - middle.y;
  for (int step = 0; step < kFitSteps; ++step) circle = Improved(circle, centred, fixed);
  return {circle.centre + middle, circle.radius};
}

}  // namespace quillane
