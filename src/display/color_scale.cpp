#include "display/color_scale.h"

#include <array>

#include "display/palette.h"
#include "model/number_text.h"

namespace quillane {
namespace {

constexpr UserScale kLegendScale{-0.5, 17, 5, -1};
constexpr double kLabelX = 2.0;
constexpr double kTitleY = 16.8;

using ColorTable = std::array<Color, kLevelCount>;  // [level - 1]

constexpr std::uint8_t Ramp(int distance) {
  return static_cast<std::uint8_t>(255 - 3 * distance * distance);
}

constexpr ColorTable MakeColorTable() {
  ColorTable table;
  for (std::size_t k = 0; k < table.size(); ++k) {
    const int level = static_cast<int>(k) + 1;
    table[k] = level <= 8 ? Color{0, Ramp(level - 9), Ramp(level)}
                          : Color{Ramp(level - 17), Ramp(level - 8), 0};
  }
  return table;
}

constexpr ColorTable kColorTable = MakeColorTable();

}  // namespace

Color LevelColor(int level) { return kColorTable.at(static_cast<std::size_t>(level - 1)); }

void DrawColorBar(DrawingArea& picColorBar, std::string_view title) {
  picColorBar.Clear();
  picColorBar.SetScale(kLegendScale);
  picColorBar.SetLineWidth(1);
  picColorBar.SetColor(kBlue);
  picColorBar.SetTextSize(kLegendScale.right, kTitleY - kLevelCount, title);
  picColorBar.DrawText(0, kTitleY, title);
  for (int level = 1; level <= kLevelCount; ++level) {
    picColorBar.SetColor(LevelColor(level));
    picColorBar.FillBox(0, level - 1, 1.5, level);
    picColorBar.SetColor(kBlue);
    picColorBar.DrawBox(0, level - 1, 1.5, level);
  }
}

void DrawLevelLabel(DrawingArea& picColorBar, int level, Single value) {
  constexpr std::string_view kLongestLabel = "-0.00E+00";
  picColorBar.SetColor(kBlue);
  picColorBar.SetTextSize(kLegendScale.right - kLabelX, 1.0, kLongestLabel);
  picColorBar.DrawText(kLabelX, level, ExponentText(double{value}));
}

}  // namespace quillane
