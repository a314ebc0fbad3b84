// What the fast solver is compiled for: no instruction set that would only repeat another.
#pragma once

#include "hwy/detect_targets.h"

#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS \
  (HWY_SSSE3 | HWY_AVX3_DL | HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
