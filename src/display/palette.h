// The colours of the drawing: the standard 16-colour palette and the canvas background.
#pragma once

#include "display/drawing_area.h"

namespace quillane {

inline constexpr Color kBlue{0, 0, 128};            ///< palette colour 1
inline constexpr Color kCyan{0, 128, 128};          ///< palette colour 3
inline constexpr Color kRed{128, 0, 0};             ///< palette colour 4
inline constexpr Color kLightGreen{0, 255, 0};      ///< palette colour 10
inline constexpr Color kLightCyan{0, 255, 255};     ///< palette colour 11
inline constexpr Color kLightRed{255, 0, 0};        ///< palette colour 12
inline constexpr Color kMagenta{255, 0, 255};       ///< palette colour 13
inline constexpr Color kWhite{255, 255, 255};       ///< palette colour 15
inline constexpr Color kBackground{255, 255, 128};  ///< light yellow

}  // namespace quillane
