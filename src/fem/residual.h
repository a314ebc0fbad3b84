// How well a solution satisfies the equations.
#pragma once

#include "model/model.h"

namespace quillane {

/// A solve whose true residual is above this does not count as converged.
inline constexpr double kTrueResidualBound = 1.0e-3;

/// |f - K u| / |f| of SolutionVector, K taken from the elements present one by one. The residual
/// that the iteration carries along drifts from this one where the plate can move freely. Not a
/// number or infinite where a product is not finite. The model must be numbered and solved.
double TrueResidual(const Model& model);

}  // namespace quillane
