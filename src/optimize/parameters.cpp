#include "optimize/parameters.h"

#include "model/number_text.h"

namespace quillane {

std::string ParameterSummary(const Model& model) {
  return "Stress Target = " + GeneralText(model.StressTarget) +
         "MPa   Epsilon = " + GeneralText(int{model.Epsilon}) +
         "   Lambda = " + GeneralText(model.Lambda);
}

}  // namespace quillane
