// What the texts typed in a dialog's boxes do to the model.
#pragma once

#include <optional>
#include <string_view>

#include "edit/edit_state.h"
#include "model/model.h"

namespace quillane {

/// Of the functions below: the place, from 0, of the first text whose number is too large for its
/// type, and nothing is stored; or nothing, and all are stored. A text counts by its leading
/// number, 0 where it has none.
using RefusedText = std::optional<int>;

/// LoadFx and LoadFy, N.
RefusedText SetAppliedLoad(Model& model, std::string_view forceX, std::string_view forceY);

/// YoungModulus (MPa), Thickness (mm) and PoissonRatio.
RefusedText SetMaterial(Model& model, EditState& state, std::string_view modulus,
                        std::string_view thickness, std::string_view ratio);

/// StressTarget (MPa), Epsilon, to the nearest integer with halves to even, and Lambda.
RefusedText SetParameters(Model& model, std::string_view target, std::string_view epsilon,
                          std::string_view lambda);

/// A width or a cell's size, mm; 0 where the text is no positive Single.
Single PositiveLength(std::string_view text);

}  // namespace quillane
