// Stores what is typed into a dialog in the model.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "edit/edit_state.h"
#include "model/model.h"

namespace quillane {

/// The index, from 0, of the first text whose number is too large for its type; in that case
/// nothing is stored. Without a value all numbers are stored. The number of a text is its leading
/// one, 0 if it has none.
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

/// Returns the length (mm) at the start of a text; 0 if it is not above 0 or no Single.
Single PositiveLength(std::string_view text);

/// What a typed number is expected to be.
enum class NumberRule { kAny, kWhole, kAboveZero };

/// Returns how a text is read if that is not as it looks: "read as 12" for "12,5", "read as 2" for
/// "2.5" where a whole number is due, "too large" beyond a Double, and "read as -3, not above 0"
/// where a number above 0 is due. Returns an empty string for a plain number.
std::string ReadingHint(std::string_view text, NumberRule rule);

}  // namespace quillane
