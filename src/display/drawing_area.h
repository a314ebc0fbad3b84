// The abstract canvas of all drawing, independent of any toolkit.
#pragma once

#include <cstdint>
#include <string_view>

namespace quillane {

struct Color {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
  friend bool operator==(const Color&, const Color&) = default;
};

/// User coordinates, given by those of two opposite corners of the area; y grows upwards if top >
/// bottom.
struct UserScale {
  double left = 0;
  double top = 0;
  double right = 1;
  double bottom = 1;
  friend bool operator==(const UserScale&, const UserScale&) = default;
};

/// A persistent picture. All coordinates and lengths are in user units of the current scale. Any
/// coordinates are allowed, however far outside the area or not a number; what lies outside is
/// clipped.
class DrawingArea {
 public:
  virtual ~DrawingArea() = default;

  virtual void SetScale(const UserScale& scale) = 0;
  virtual UserScale Scale() const = 0;

  /// Sets the colour that Clear fills the picture with.
  virtual void SetBackground(Color color) = 0;
  virtual void Clear() = 0;

  /// Set colour and width in pixels of the lines, outlines, circles and text that follow.
  virtual void SetColor(Color color) = 0;
  virtual void SetLineWidth(int pixels) = 0;

  /// Draw between two points or opposite corners, or around a centre.
  virtual void DrawLine(double x1, double y1, double x2, double y2) = 0;
  virtual void DrawBox(double x1, double y1, double x2, double y2) = 0;  ///< outline
  virtual void FillBox(double x1, double y1, double x2, double y2) = 0;  ///< in the drawing colour
  virtual void DrawCircle(double x, double y, double radius) = 0;        ///< radius in x units

  /// Sets the size of the text that follows: the system's size, reduced until `sample` fits into a
  /// box of width x height.
  virtual void SetTextSize(double width, double height, std::string_view sample) = 0;

  /// Draws text (UTF-8) with its upper left corner at (x, y).
  virtual void DrawText(double x, double y, std::string_view text) = 0;
};

}  // namespace quillane
