#include "optimize/parameters.h"

#include "model/number_text.h"
#include "model/numbers.h"

namespace quillane {

Single StressTargetFromText(std::string_view text) {
  constexpr const char* kWhat = "the stress target";
  return ToSingle(LeadingNumber(text, kWhat), kWhat);
}

Integer EpsilonFromText(std::string_view text) {
  constexpr const char* kWhat = "the threshold Epsilon";
  return ToInteger(LeadingNumber(text, kWhat), kWhat);
}

Single LambdaFromText(std::string_view text) {
  constexpr const char* kWhat = "the forget coefficient Lambda";
  return ToSingle(LeadingNumber(text, kWhat), kWhat);
}

std::string ParameterSummary(const Model& model) {
  return "Stress Target = " + GeneralText(model.StressTarget) +
         "MPa   Epsilon = " + GeneralText(int{model.Epsilon}) +
         "   Lambda = " + GeneralText(model.Lambda);
}

}  // namespace quillane
