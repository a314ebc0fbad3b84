// The dialog for the parameters of the optimization.
#pragma once

#include "model/number_text.h"
#include "ui/form.h"

namespace quillane {

/// "Optimization Parameter".
class frmController : public NumberForm {
 public:
  explicit frmController(frmMain& main)
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

 private:
  std::optional<Refusal> Store(const Texts& texts) override {
    return TooLarge(SetParameters(Main().model(), texts[0], texts[1], texts[2]));
  }

  std::string Caption() const override {
    const Model& model = Main().model();
    return "Stress Target = " + GeneralText(model.StressTarget) +
           "MPa   Epsilon = " + GeneralText(int{model.Epsilon}) +
           "   Lambda = " + GeneralText(model.Lambda);
  }
};

}  // namespace quillane
