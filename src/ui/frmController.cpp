#include "ui/frmController.h"

#include "model/number_text.h"

namespace quillane {

frmController::frmController(frmMain& main)
    : NumberForm(main, {"frmController", "Optimization Parameter"}) {
  const Model& model = main.model();
  LayOut(nullptr,
         {{"Specify a target value of stress",
           "von Mises Stress:", NumberBox("txtDpStress", GeneralText(model.StressTarget)), ""},
          {"Specify threshold value Epsilon", "Epsilon:",
           NumberBox("txtDpEpsilon", GeneralText(int{model.Epsilon}), NumberRule::kWhole), ""},
          {"and forget coefficient Lambda.",
           "Lambda:", NumberBox("txtDpLambda", GeneralText(model.Lambda)), ""}});
}

RefusedIndex frmController::Store(const Texts& texts) {
  return SetParameters(Main().model(), texts[0], texts[1], texts[2]);
}

std::string frmController::Caption() const {
  const Model& model = Main().model();
  return "Stress Target = " + GeneralText(model.StressTarget) +
         "MPa   Epsilon = " + GeneralText(int{model.Epsilon}) +
         "   Lambda = " + GeneralText(model.Lambda);
}

}  // namespace quillane
