// The canvas that all drawing goes to, in the program's own terms and free of any toolkit.
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

/// A user coordinate scale by two opposite corners of the area, y growing upwards when top >
/// bottom.
struct UserScale {
  double left = 0;
  double top = 0;
  double right = 1;
  double bottom = 1;
  friend bool operator==(const UserScale&, const UserScale&) = default;
};

/// A persistent picture that is drawn on in user coordinates. Coordinates may lie anywhere, also
/// far outside the area or beyond any number of pixels; what is outside is not seen.
class DrawingArea {
 public:
  virtual ~DrawingArea() = default;

  virtual void SetScale(const UserScale& scale) = 0;
  virtual UserScale Scale() const = 0;

  /// The colour that Clear fills with.
  virtual void SetBackground(Color color) = 0;
  virtual void Clear() = 0;

  /// Colour and width in pixels of lines, outlines, circles and text to come.
  virtual void SetColor(Color color) = 0;
  virtual void SetLineWidth(int pixels) = 0;

  virtual void DrawLine(double x1, double y1, double x2, double y2) = 0;
  virtual void DrawBox(double x1, double y1, double x2, double y2) = 0;  ///< outline
  virtual void FillBox(double x1, double y1, double x2, double y2) = 0;  ///< in the drawing colour
  virtual void DrawCircle(double x, double y, double radius) = 0;        ///< radius in x units

  /// Text to come has the system's size, or as much less as `sample` needs to fit into a box of
  /// width x height user units. The present scale counts.
  virtual void SetTextSize(double width, double height, std::string_view sample) = 0;

  /// Text (UTF-8) whose upper left corner is at (x, y).
  virtual void DrawText(double x, double y, std::string_view text) = 0;
};

}  // namespace quillane
