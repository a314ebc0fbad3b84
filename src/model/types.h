// The number types of the model: 16-bit whole numbers, single and double precision.
#pragma once

#include <cstdint>

namespace quillane {

using Integer = std::int16_t;  ///< all counts, codes and indices
using Single = float;
using Double = double;

inline constexpr int kIntegerMax = 32767;

/// The value that a true Integer flag holds (0 is false).
inline constexpr Integer kTrue = -1;

}  // namespace quillane
