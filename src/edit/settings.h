// From the texts typed into a dialog to the model.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "edit/edit_state.h"
#include "model/model.h"

namespace quillane {

/// The result of the functions below: the index, from 0, of the first argument text whose number is
/// too large for its type, and then nothing is stored; or nothing, and then all are stored. The
/// value of a text is its leading number, 0 if it has none.
using RefusedIndex = std::optional<int>;

/// Sets LoadFx and LoadFy, N.
RefusedIndex SetAppliedLoad(Model& model, std::string_view forceX, std::string_view forceY);

/// Sets YoungModulus (MPa), Thickness (mm) and PoissonRatio.
RefusedIndex SetMaterial(Model& model, EditState& state, std::string_view modulus,
                         std::string_view thickness, std::string_view ratio);

/// Sets StressTarget (MPa), Epsilon, rounded to the nearest integer with ties to even, and Lambda.
RefusedIndex SetParameters(Model& model, std::string_view target, std::string_view epsilon,
                           std::string_view lambda);

/// Sets DomainWidth and ElementSize, mm.
void SetGrid(Model& model, EditState& state, Single width, Single elementSize);

/// Returns a width or a cell's size, mm; 0 if the text is no positive Single.
Single PositiveLength(std::string_view text);

/// What a typed number is expected to be.
enum class NumberRule { kAny, kWhole, kAboveZero };

/// Returns "read as 12" for a text such as "12,5", whose number is not what it shows, or for a
/// number that is not above 0 but should be; empty for a plain number.
std::string ReadOtherwise(std::string_view text, NumberRule rule);

}  // namespace quillane
