// A drawing area that keeps the list of what was drawn since it was cleared.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "display/drawing_area.h"

namespace quillane::test {

enum class Shape { kClear, kLine, kOutline, kFill, kCircle, kText };

struct DrawCall {
  Shape shape{};
  double x1, y1, x2, y2;  // circle: centre, radius in x2
  Color color;
  int width = 1;
  std::string text = {};
};

class RecordingArea : public DrawingArea {
 public:
  void SetScale(const UserScale& scale) override { scale_ = scale; }
  UserScale Scale() const override { return scale_; }
  void SetBackground(Color color) override { background_ = color; }
  void Clear() override { calls = {{Shape::kClear, 0, 0, 0, 0, background_}}; }
  void SetColor(Color color) override { color_ = color; }
  void SetLineWidth(int pixels) override { width_ = pixels; }
  void DrawLine(double a, double b, double c, double d) override { Add(Shape::kLine, a, b, c, d); }
  void DrawBox(double a, double b, double c, double d) override {
    Add(Shape::kOutline, a, b, c, d);
  }
  void FillBox(double a, double b, double c, double d) override { Add(Shape::kFill, a, b, c, d); }
  void DrawCircle(double x, double y, double r) override { Add(Shape::kCircle, x, y, r, 0); }
  void SetTextSize(double, double, std::string_view) override {}
  void DrawText(double x, double y, std::string_view text) override {
    Add(Shape::kText, x, y, 0, 0, text);
  }

  int Count(Shape shape, Color color) const {
    return static_cast<int>(std::ranges::count_if(
        calls, [&](const DrawCall& call) { return call.shape == shape && call.color == color; }));
  }

  /// Whether a line was drawn from one point to the other, in this direction.
  bool HasLine(Color color, int width, double x1, double y1, double x2, double y2) const {
    return std::ranges::any_of(calls, [&](const DrawCall& call) {
      const auto near = [](double a, double b) { return std::fabs(a - b) < 1e-4; };
      return call.shape == Shape::kLine && call.color == color && call.width == width &&
             near(call.x1, x1) && near(call.y1, y1) && near(call.x2, x2) && near(call.y2, y2);
    });
  }

  /// The text that starts at y; the colour of the filled box whose lower edge is at y.
  std::string TextAt(double y) const {
    std::string texts;
    for (const DrawCall& call : calls) {
      if (call.shape == Shape::kText && call.y1 == y) texts += call.text;
    }
    return texts;
  }
  Color FillAt(double y) const {
    const auto fill = std::ranges::find_if(
        calls, [y](const DrawCall& call) { return call.shape == Shape::kFill && call.y1 == y; });
    return fill == calls.end() ? Color{} : fill->color;
  }

  /// The colours in the order of their first use, of boxes filled only or of all.
  std::vector<Color> Colors(bool filledOnly) const {
    std::vector<Color> colors;
    for (const DrawCall& call : calls) {
      if (filledOnly && call.shape != Shape::kFill) continue;
      if (std::ranges::count(colors, call.color) == 0) colors.push_back(call.color);
    }
    return colors;
  }

  std::vector<DrawCall> calls;

 private:
  void Add(Shape shape, double a, double b, double c, double d, std::string_view text = {}) {
    calls.push_back({shape, a, b, c, d, color_, width_, std::string(text)});
  }

  UserScale scale_;
  Color background_, color_;
  int width_ = 1;
};

}  // namespace quillane::test
