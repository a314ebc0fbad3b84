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

/// By the plain procedures. The model's active nodes must be marked. Throws as they do.
SolverPieces PlainPieces(Model model, const Vector& x);

/// By the fast form; nothing if it declines the model.
std::optional<SolverPieces> WavePieces(Model model, const Vector& x);

}  // namespace quillane::test
