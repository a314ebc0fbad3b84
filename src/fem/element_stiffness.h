// The stiffness of one square cell.
#pragma once

#include "model/model.h"

namespace quillane {

/// Fills ElementStiffness (N/mm) of the four-node bilinear square in plane stress, integrated
/// exactly; rows and columns u1 v1 u2 v2 u3 v3 u4 v4, nodes counter-clockwise from the lower left.
/// The edge length cancels. Throws RunTimeError (floating point) for Poisson's ratio 1 or -1 and
/// for a stiffness beyond the range of a Double.
/// Source: O. C. Zienkiewicz, R. L. Taylor, The Finite Element Method, vol. 1, plane stress.
void CalcElementStiffness(Model& model);

/// Returns whether a material can have this Poisson's ratio: above -1 and at most 0.5.
inline bool IsPoissonRatio(double nu) { return nu > -1 && nu <= 0.5; }

/// Returns the cause of a quotient by 1 - nu^2 that is not finite.
inline ErrorCause CauseOfPoissonRatio(double nu) {
  return nu * nu == 1 ? ErrorCause::kPoissonRatio : ErrorCause::kUnsolvable;
}

}  // namespace quillane
