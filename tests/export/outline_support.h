// Layouts for outlines, and checks that every outline must pass.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "export/shape.h"
#include "support/plates.h"

namespace quillane::test {

/// Returns cells of 10 mm as drawn, upper row first: '#' material, 'N' non-design, 'x' cut out, '.'
/// empty.
Model Layout(const std::vector<std::string>& rows);

/// Returns members, islands and holes of random waves and noise, down to single cells and contacts
/// in corners, with some non-design and cut-out cells, supports and loads.
Model RandomLayout(unsigned seed);

/// Cuts out the cells whose middles lie within an ellipse; lengths in cells, aspect: width over
/// height.
void CutDisc(Model& model, double x, double y, double radius, double aspect = 1);

/// Returns the numbers in a text between the first `after` and the next `end`.
std::vector<double> Numbers(const std::string& text, const std::string& after, char end);

using Segment = std::pair<Point, Point>;

/// Returns the segments of an outline, arcs as chords.
std::vector<Segment> Segments(const Shape& shape);

bool Same(Point a, Point b);

/// Returns whether p lies in the material, from the crossings of a ray to the right.
bool IsInside(Point p, const std::vector<Segment>& outline);

/// Fails if two segments have more in common than one end.
void ExpectNoneMeet(const std::vector<Segment>& outline);

/// Fails if the facets of a binary STL file leave an edge open or enclose another volume; error: as
/// a share of it.
void ExpectClosedSolid(const std::string& stl, double volume, double error);

}  // namespace quillane::test
