// The dialog for the plate's material and thickness.
#pragma once

#include <QLabel>

#include "model/number_text.h"
#include "ui/form.h"

namespace quillane {

/// "Design Property".
class frmMaterial : public NumberForm {
 public:
  explicit frmMaterial(frmMain& main) : NumberForm(main, {"frmMaterial", "Design Property"}) {
    const Model& model = main.model();
    const auto box = [this](const char* name, Double value, NumberRule rule) {
      return NumberBox(name, GeneralText(value), rule);
    };
    LayOut(Label("Specify Design Property Values"),
           {{"", "Modulus of Elasticity: ",
             box("txtEmod", model.YoungModulus, NumberRule::kAboveZero), "MPa"},
            {"", "Thickness: ", box("txtThickness", model.Thickness, NumberRule::kAboveZero), "mm"},
            {"", "Poissons Ratio: ", box("txtPoison", model.PoissonRatio, NumberRule::kAny), ""}});
  }

 private:
  std::optional<Refusal> Store(const Texts& texts) override {
    return TooLarge(SetMaterial(Main().model(), Main().Edits(), texts[0], texts[1], texts[2]));
  }

  std::string Caption() const override {
    const Model& model = Main().model();
    return "ヤング率 = " + GeneralText(model.YoungModulus) +
           "MPa  板厚 = " + GeneralText(model.Thickness) +
           "mm  ポアソン比 = " + GeneralText(model.PoissonRatio);
  }
};

}  // namespace quillane
