// The 16-level colour ramp of the result maps and the legend that shows it.
#pragma once

#include <string_view>

#include "display/drawing_area.h"
#include "model/types.h"

namespace quillane {

inline constexpr int kLevelCount = 16;

inline constexpr std::string_view kStressTitle = "stress(MPa)";
inline constexpr std::string_view kPotentialTitle = "Potential";

/// Returns the colour of a level 1..16, of which 1 is the lowest, on a ramp from blue by green to
/// red.
Color LevelColor(int level);

/// Redraws the legend from scratch: the scale x = -0.5..5, y = -1..17, the title, and level L as a
/// box from (0, L - 1) to (1.5, L).
void DrawColorBar(DrawingArea& picColorBar, std::string_view title);

/// Writes the value of a level 1..16 beside the box that DrawColorBar draws.
void DrawLevelLabel(DrawingArea& picColorBar, int level, Single value);

}  // namespace quillane
