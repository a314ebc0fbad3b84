#include "display/result_maps.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "display/palette.h"
#include "model/number_text.h"
#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

/// Upper ends of the levels, ascending; [level - 1].
using LevelLimits = std::array<Single, kLevelCount>;

/// Returns limits from the smallest to the largest value in 15 equal widths.
LevelLimits LimitsBetween(ValueRange extremes) {
  const Single width =
      ToSingle((extremes.largest - extremes.smallest) / 15, "The width of a level");
  LevelLimits limits{};
  for (std::size_t k = 0; k < 15; ++k) {
    const Single above = static_cast<Single>(k) * width;
    limits[k] = ToSingle(extremes.smallest + double{above}, "The limit of a level");
  }
  limits[15] = ToSingle(extremes.largest, "The largest value");
  return limits;
}

/// Returns the lowest level 1..16 whose limit is not below the value.
int LevelOf(const LevelLimits& limits, Single value) {
  const auto limit = std::ranges::find_if(limits, [value](Single top) { return value <= top; });
  if (limit == limits.end()) {
    throw RunTimeError(ErrorKind::kSubscript,
                       "the value " + GeneralText(value) + " is above the highest level");
  }
  return static_cast<int>(std::distance(limits.begin(), limit)) + 1;
}

void DrawMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
             std::string_view title, const Array2<Double>& values, ValueRange extremes,
             const DrawingStyle& style) {
  const LevelLimits limits = LimitsBetween(style.range.value_or(extremes));
  DrawEmptyDomain(picCanvas, model, kWhite, style);
  DrawColorBar(picColorBar, title);
  for (int level = 0; const Single limit : limits) DrawLevelLabel(picColorBar, ++level, limit);
  ForEachPresentCell(model, [&](int i, int j, int element) {
    const Single given = ToSingle(values(i, j), "The value of a cell");
    const Single value = style.range ? std::min(given, limits.back()) : given;
    picCanvas.SetColor(LevelColor(LevelOf(limits, value)));
    FillElement(picCanvas, model, element);
  });
  DrawLoads(picCanvas, model);
  DrawSupports(picCanvas, model);
}

/// Returns the extremes of Potential over all cells, 0 included.
ValueRange PotentialRange(const Model& model) {
  ValueRange extremes;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      extremes.smallest = std::min(extremes.smallest, model.Potential(i, j));
      extremes.largest = std::max(extremes.largest, model.Potential(i, j));
    }
  }
  return extremes;
}

}  // namespace

void DrawStressMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const DrawingStyle& style) {
  DrawMap(picCanvas, picColorBar, model, kStressTitle, model.CellStress,
          {model.MinStress, model.MaxStress}, style);
}

void DrawNeuronMap(DrawingArea& picCanvas, DrawingArea& picColorBar, const Model& model,
                   const DrawingStyle& style) {
  DrawMap(picCanvas, picColorBar, model, kPotentialTitle, model.Potential, PotentialRange(model),
          style);
}

}  // namespace quillane
