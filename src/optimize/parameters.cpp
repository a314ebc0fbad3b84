// Optimization parameters from typed text.
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

void SetParameters(Model& model, std::string_view stressTarget, std::string_view epsilon,
                   std::string_view lambda) {
  model.StressTarget = StressTargetFromText(stressTarget);
  model.Epsilon = EpsilonFromText(epsilon);
  model.Lambda = LambdaFromText(lambda);
}

std::string ParameterSummary(const Model& model) {
  return "Stress Target = " + GeneralText(model.StressTarget) +
         "MPa   Epsilon = " + GeneralText(int{model.Epsilon}) +
         "   Lambda = " + GeneralText(model.Lambda);
}

}  // namespace quillane
