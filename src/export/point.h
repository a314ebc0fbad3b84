// Points of the plane and what is computed with them.
#pragma once

#include <algorithm>
#include <cmath>

namespace quillane {

struct Point {
  double x = 0, y = 0;  ///< mm
};

inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
inline Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
inline Point operator*(double factor, Point a) { return {factor * a.x, factor * a.y}; }
inline double Dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
inline double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }
inline double Length(Point a) { return std::hypot(a.x, a.y); }

/// Returns the distance of p from the segment from a to b.
inline double Distance(Point p, Point a, Point b) {
  const double square = Dot(b - a, b - a);
  const double part = square > 0 ? std::clamp(Dot(p - a, b - a) / square, 0.0, 1.0) : 0;
  return Length(p - a - part * (b - a));
}

}  // namespace quillane
