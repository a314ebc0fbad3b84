// The formats of an outline's file.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "export/measures.h"
#include "export/smoothing.h"

namespace quillane {

enum class OutlineFormat { kSvg, kDxf, kStl };

/// Returns the format that the suffix of a path names, in either case; nothing for another suffix.
std::optional<OutlineFormat> OutlineFormatOf(const std::filesystem::path& path);

/// Returns an SVG file with one filled path, in mm and true to size. Its y axis points down, as the
/// format requires.
std::string SvgText(const Shape& shape);

/// Returns a DXF file (release 2000) with a circle or a closed polyline for each loop, in mm, on
/// the layer "OUTLINE", at the place of the model. Throws FileWriteError if no file can be written
/// in the temporary folder.
std::string DxfText(const Shape& shape);

/// Returns a binary STL file of the closed solid from z = 0 to z = thickness, in mm, its facets
/// counter-clockwise as seen from outside. The lower left corner of the domain is the origin, as
/// the format is in single precision. Throws FileWriteError if the thickness is not positive or a
/// size is out of the format's range.
std::string StlText(const Shape& shape, double thickness);

/// Returns the content of the file; only a solid has the thickness (mm). Throws FileWriteError as
/// the function of the format.
std::string OutlineText(OutlineFormat format, const Shape& shape, double thickness);

/// The properties of an outline that matter for its manufacture.
struct OutlineFigures {
  double areaChange = 0;              ///< by smoothing, as a part of the area
  int pieces = 0, holes = 0;          ///< loops around material and around holes
  int contacts = 0;                   ///< corners in which two loops touch
  double shortestSegment = 0;         ///< mm
  std::optional<Neck> neck;           ///< the narrowest
  std::vector<Circle> circles, arcs;  ///< circles that are whole, and those of which a part is
};

struct OutlineFile {
  std::string text;
  OutlineFigures figures;
};

/// Returns the file of a model's shape, smoothed at the given edges, and the figures of its
/// outline. Throws FileWriteError as TraceShape and OutlineText.
OutlineFile MakeOutlineFile(OutlineFormat format, const Model& model,
                            std::optional<SmoothEdges> smooth);

}  // namespace quillane
