// A shape as a solid for 3D printing and milling.
#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <algorithm>
#include <cfloat>
#include <utility>
#include <vector>

#include "export/outline_file.h"
#include "export/triangles.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

/// How far the facets of a round wall may lie from its arc, in edges of a cell.
constexpr double kDeviation = 0.01;

struct Point3 {
  double x, y, z;
};

/// Collects facets in the bytes of the format: a title of 80 bytes, the number of facets, and each
/// facet with an empty attribute.
class Facets {
 public:
  Facets() {
    stream_.setByteOrder(QDataStream::LittleEndian);
    stream_.setFloatingPointPrecision(QDataStream::SinglePrecision);
    stream_.writeRawData(QByteArray("plate, lengths in mm").leftJustified(kTitleSize), kTitleSize);
    stream_ << count_;
  }

  /// Adds a triangle, counter-clockwise as seen from outside, and its normal.
  void Add(Point3 normal, Point3 a, Point3 b, Point3 c) {
    for (const Point3& p : {normal, a, b, c}) stream_ << p.x << p.y << p.z;
    stream_ << quint16{0};
    ++count_;
  }

  std::string Text() {
    stream_.device()->seek(kTitleSize);
    stream_ << count_;
    return bytes_.toStdString();
  }

 private:
  static constexpr int kTitleSize = 80;

  QByteArray bytes_;
  QDataStream stream_{&bytes_, QIODevice::WriteOnly};
  quint32 count_ = 0;
};

/// Returns twice the area of a triangle, negative if it is clockwise.
double Twice(Point a, Point b, Point c) { return Cross(b - a, c - a); }

/// Triangulates the faces of the solid between z = 0 and the thickness.
class Solid {
 public:
  Solid(const Shape& shape, double thickness)
      : shape_(shape), deviation_(kDeviation * shape.cell), thickness_(thickness) {}

  std::string Text() {
    for (const Cell& cell : shape_.cells) AddCell(cell);
    for (const std::vector<int>& loop : shape_.loops) {
      for (int last = loop.back(); const int corner : loop)
        AddWalls(std::exchange(last, corner), corner);
    }
    return facets_.Text();
  }

 private:
  Point At(int corner) const { return shape_.At(corner); }
  static Point3 Low(Point p) { return {p.x, p.y, 0}; }
  Point3 High(Point p) const { return {p.x, p.y, thickness_}; }

  /// Adds top and bottom of a cell. Divides a quadrilateral along the diagonal that leaves the
  /// larger smallest triangle.
  void AddCell(const Cell& cell) {
    std::vector<Point> p = CellPolygon(shape_, cell, deviation_);
    for (Point& place : p) place = place - At(1);
    if (p.size() > 4) {
      for (const std::array<Point, 3>& triangle : Triangles(p)) AddFaces(triangle);
      return;
    }
    if (std::min(Twice(p[0], p[1], p[2]), Twice(p[0], p[2], p[3])) <
        std::min(Twice(p[1], p[2], p[3]), Twice(p[1], p[3], p[0]))) {
      std::rotate(p.begin(), p.begin() + 1, p.end());
    }
    AddFaces({p[0], p[1], p[2]});
    AddFaces({p[0], p[2], p[3]});
  }

  void AddFaces(const std::array<Point, 3>& t) {
    facets_.Add({0, 0, 1}, High(t[0]), High(t[1]), High(t[2]));
    facets_.Add({0, 0, -1}, Low(t[0]), Low(t[2]), Low(t[1]));
  }

  /// Adds the walls along an edge, which may be an arc.
  void AddWalls(int from, int to) {
    Point last = At(from);
    if (const Circle* arc = ArcOfEdge(shape_, from, to)) {
      for (const Point& p : ArcPoints(*arc, At(from), At(to), deviation_)) {
        AddWall(std::exchange(last, p) - At(1), p - At(1));
      }
    }
    AddWall(last - At(1), At(to) - At(1));
  }

  void AddWall(Point from, Point to) {
    const Point along = to - from;
    const double length = Length(along);
    const Point3 outward{along.y / length, -along.x / length, 0};
    facets_.Add(outward, Low(from), Low(to), High(to));
    facets_.Add(outward, Low(from), High(to), High(from));
  }

  const Shape& shape_;
  const double deviation_, thickness_;
  Facets facets_;
};

}  // namespace

std::string StlText(const Shape& shape, double thickness) {
  const Point size = shape.corners.back() - shape.corners[1];
  if (!(thickness >= double{FLT_MIN}))
    throw FileWriteError("a plate without thickness is no solid");
  if (std::max({size.x, size.y, thickness}) > double{FLT_MAX}) {
    throw FileWriteError("the plate is too large for the format");
  }
  return Solid(shape, thickness).Text();
}

}  // namespace quillane
