// Pictures of shapes, those of two methods side by side.
#pragma once

#include <QImage>
#include <vector>

#include "shape_cases.h"

namespace quillane {

/// Our shape on the left, the density method's on the right, both coloured by stress on one scale.
/// width, height: of one of the two, pixels. Needs a QGuiApplication.
QImage PairPicture(const ShapePair& pair, int width, int height);

/// The pictures in rows of so many, row by row.
QImage Montage(const std::vector<QImage>& pictures, int columns);

}  // namespace quillane
