// A drawing area that keeps the list of what was drawn since it was cleared.
#pragma once

#include <algorithm>
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
