// How well a solution satisfies the equations.
#pragma once

#include "model/model.h"

namespace quillane {

/// A solve with a larger true residual is reported as not converged.
inline constexpr double kTrueResidualBound = 1.0e-3;

/// Returns |f - K u| / |f| of SolutionVector, with K applied element by element; not finite if a
/// product is not. The residual that the iteration updates drifts from this one if the plate can
/// move freely. Requires a numbered and solved model.
double TrueResidual(const Model& model);

}  // namespace quillane
