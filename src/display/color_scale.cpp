#include "display/color_scale.h"

#include "display/palette.h"
#include "model/number_text.h"

namespace quillane {
namespace {

constexpr UserScale kLegendScale{-0.5, 17, 5, -1};
constexpr double kLabelX = 2.0;
constexpr double kTitleY = 16.8;

Integer Ramp(int distance) { return static_cast<Integer>(255 - 3 * distance * distance); }

}  // namespace

ColorTable MakeColorTable() {
  ColorTable table{};
  for (int level = 1; level <= 8; ++level) {
    table[static_cast<std::size_t>(level - 1)] = {0, Ramp(level - 9), Ramp(level)};
  }
  for (int level = 9; level <= kLevelCount; ++level) {
    table[static_cast<std::size_t>(level - 1)] = {Ramp(level - 17), Ramp(level - 8), 0};
  }
  return table;
}

Color LevelColor(const ColorTable& table, int level) {
  const auto& [red, green, blue] = table.at(static_cast<std::size_t>(level - 1));
  return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green),
          static_cast<std::uint8_t>(blue)};
}

void DrawColorBar(DrawingArea& picColorBar, const ColorTable& table, std::string_view title) {
  picColorBar.Clear();
  picColorBar.SetScale(kLegendScale);
  picColorBar.SetLineWidth(1);
  picColorBar.SetColor(kBlue);
  picColorBar.SetTextSize(kLegendScale.right, kTitleY - kLevelCount, title);
  picColorBar.DrawText(0, kTitleY, title);
  for (int level = 1; level <= kLevelCount; ++level) {
    picColorBar.SetColor(LevelColor(table, level));
    picColorBar.FillBox(0, level - 1, 1.5, level);
    picColorBar.SetColor(kBlue);
    picColorBar.DrawBox(0, level - 1, 1.5, level);
  }
}

void DrawLevelLabel(DrawingArea& picColorBar, int level, Single value) {
  constexpr std::string_view kLongestLabel = "-0.00E+00";
  picColorBar.SetColor(kBlue);
  picColorBar.SetTextSize(kLegendScale.right - kLabelX, 1.0, kLongestLabel);
  picColorBar.DrawText(kLabelX, level, ExponentText(static_cast<double>(value)));
}

}  // namespace quillane
