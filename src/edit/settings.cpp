#include "edit/settings.h"

#include "model/number_text.h"
#include "model/numbers.h"

namespace quillane {

RefusedIndex SetAppliedLoad(Model& model, std::string_view forceX, std::string_view forceY) {
  const std::optional<double> x = LeadingNumber(forceX), y = LeadingNumber(forceY);
  if (!x) return 0;
  if (!y) return 1;
  model.LoadFx = *x;
  model.LoadFy = *y;
  return std::nullopt;
}

RefusedIndex SetMaterial(Model& model, EditState& state, std::string_view modulus,
                         std::string_view thickness, std::string_view ratio) {
  const std::optional<double> e = LeadingNumber(modulus), t = LeadingNumber(thickness),
                              nu = LeadingNumber(ratio);
  if (!e) return 0;
  if (!t) return 1;
  if (!nu) return 2;
  state.changedSinceAnalysis |=
      *e != model.YoungModulus || *t != model.Thickness || *nu != model.PoissonRatio;
  model.YoungModulus = *e;
  model.Thickness = *t;
  model.PoissonRatio = *nu;
  return std::nullopt;
}

RefusedIndex SetParameters(Model& model, std::string_view target, std::string_view epsilon,
                           std::string_view lambda) {
  const std::optional<double> stress = LeadingNumber(target), threshold = LeadingNumber(epsilon),
                              share = LeadingNumber(lambda);
  if (!stress || !FitsSingle(*stress)) return 0;
  if (!threshold || !FitsInteger(*threshold)) return 1;
  if (!share || !FitsSingle(*share)) return 2;
  model.StressTarget = static_cast<Single>(*stress);
  model.Epsilon = ToInteger(*threshold, "Epsilon");
  model.Lambda = static_cast<Single>(*share);
  return std::nullopt;
}

void SetGrid(Model& model, EditState& state, Single width, Single elementSize) {
  state.changedSinceAnalysis |= elementSize != model.ElementSize;
  model.DomainWidth = width;
  model.ElementSize = elementSize;
}

Single PositiveLength(std::string_view text) {
  const std::optional<double> length = LeadingNumber(text);
  return length && *length > 0 && FitsSingle(*length) ? static_cast<Single>(*length) : 0;
}

std::string ReadingHint(std::string_view text, NumberRule rule) {
  const std::optional<double> leading = LeadingNumber(text);
  if (!leading) return "too large";
  const bool isRounded = rule == NumberRule::kWhole && FitsInteger(*leading);
  const double number = isRounded ? ToInteger(*leading, "a typed number") : *leading;
  const std::string read = "read as " + GeneralText(number);
  if (rule == NumberRule::kAboveZero && number <= 0) return read + ", not above 0";
  double shown = 0;
  const bool isPlain = ParseField(text, shown) == FieldFault::kNone && shown == number;
  return isPlain ? "" : read;
}

}  // namespace quillane
