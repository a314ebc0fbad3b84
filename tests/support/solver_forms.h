// The parts of an iteration by both forms of the solver.
#pragma once

#include <optional>
#include <vector>

#include "model/model.h"

namespace quillane::test {

using Vector = std::vector<double>;  ///< by equation, from 1

struct SolverPieces {
  Vector preconditioned;  ///< z = M^-1 x
  Vector product;         ///< K z
};

/// Returns the pieces by the plain procedures, and throws as they do. Requires marked active nodes.
SolverPieces PlainPieces(Model model, const Vector& x);

/// Returns the pieces by the fast form; nothing if it declines the model.
std::optional<SolverPieces> WavePieces(Model model, const Vector& x);

}  // namespace quillane::test
