// A drawing area that keeps the list of what was drawn.
#pragma once

#include <string>
#include <vector>

#include "display/drawing_area.h"

namespace quillane::test {

enum class Shape { kClear, kLine, kOutline, kFill, kCircle, kText };

struct DrawCall {
  Shape shape{};
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // circle: centre, radius in x2
  Color color;
  int width = 0;
  std::string text;
};

class RecordingArea : public DrawingArea {
 public:
  void SetScale(const UserScale& scale) override { scale_ = scale; }
  UserScale Scale() const override { return scale_; }
  void SetBackground(Color color) override { background_ = color; }
  void Clear() override {
    calls.clear();
    calls.push_back({Shape::kClear, 0, 0, 0, 0, background_, width_, {}});
  }
  void SetColor(Color color) override { color_ = color; }
  void SetLineWidth(int pixels) override { width_ = pixels; }
  void DrawLine(double x1, double y1, double x2, double y2) override {
    calls.push_back({Shape::kLine, x1, y1, x2, y2, color_, width_, {}});
  }
  void DrawBox(double x1, double y1, double x2, double y2) override {
    calls.push_back({Shape::kOutline, x1, y1, x2, y2, color_, width_, {}});
  }
  void FillBox(double x1, double y1, double x2, double y2) override {
    calls.push_back({Shape::kFill, x1, y1, x2, y2, color_, width_, {}});
  }
  void DrawCircle(double x, double y, double radius) override {
    calls.push_back({Shape::kCircle, x, y, radius, 0, color_, width_, {}});
  }
  void SetTextSize(double, double, std::string_view) override {}
  void DrawText(double x, double y, std::string_view text) override {
    calls.push_back({Shape::kText, x, y, 0, 0, color_, width_, std::string(text)});
  }

  /// What was drawn since the last Clear, in order, of one shape and colour.
  std::vector<DrawCall> Of(Shape shape, Color color) const {
    std::vector<DrawCall> found;
    for (const DrawCall& call : calls) {
      if (call.shape == shape && call.color == color) found.push_back(call);
    }
    return found;
  }

  std::vector<DrawCall> calls;

 private:
  UserScale scale_;
  Color background_;
  Color color_;
  int width_ = 1;
};

}  // namespace quillane::test
