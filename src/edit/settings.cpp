// Texts to numbers, all of a dialog or none.
#include "edit/settings.h"

#include <initializer_list>

#include "model/number_text.h"
#include "model/numbers.h"

namespace quillane {
namespace {

bool FitsDouble(double) { return true; }

/// A text, where its number goes, and whether the number's type takes it.
struct Entry {
  std::string_view text;
  double* number;
  bool (*fits)(double) = &FitsDouble;
};

/// The numbers of all texts, or the first that is too large.
RefusedText Read(std::initializer_list<Entry> entries) {
  int place = 0;
  for (const Entry& entry : entries) {
    const std::optional<double> number = LeadingNumber(entry.text);
    if (!number || !entry.fits(*number)) return place;
    *entry.number = *number;
    ++place;
  }
  return std::nullopt;
}

}  // namespace

RefusedText SetAppliedLoad(Model& model, std::string_view forceX, std::string_view forceY) {
  double x = 0, y = 0;
  const RefusedText refused = Read({{forceX, &x}, {forceY, &y}});
  if (!refused) {
    model.LoadFx = x;
    model.LoadFy = y;
  }
  return refused;
}

RefusedText SetMaterial(Model& model, EditState& state, std::string_view modulus,
                        std::string_view thickness, std::string_view ratio) {
  double e = 0, t = 0, nu = 0;
  const RefusedText refused = Read({{modulus, &e}, {thickness, &t}, {ratio, &nu}});
  if (!refused) {
    state.changedSinceAnalysis |=
        e != model.YoungModulus || t != model.Thickness || nu != model.PoissonRatio;
    model.YoungModulus = e;
    model.Thickness = t;
    model.PoissonRatio = nu;
  }
  return refused;
}

RefusedText SetParameters(Model& model, std::string_view target, std::string_view epsilon,
                          std::string_view lambda) {
  double stress = 0, threshold = 0, share = 0;
  const RefusedText refused = Read({{target, &stress, &FitsSingle},
                                    {epsilon, &threshold, &FitsInteger},
                                    {lambda, &share, &FitsSingle}});
  if (!refused) {
    model.StressTarget = static_cast<Single>(stress);
    model.Epsilon = ToInteger(threshold, "Epsilon");
    model.Lambda = static_cast<Single>(share);
  }
  return refused;
}

Single PositiveLength(std::string_view text) {
  const std::optional<double> length = LeadingNumber(text);
  return length && *length > 0 && FitsSingle(*length) ? static_cast<Single>(*length) : 0;
}

}  // namespace quillane
