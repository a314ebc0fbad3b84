// The dialog that takes the force which presses on nodes apply.
#pragma once

#include <QLineEdit>
#include <QRadioButton>

#include "model/number_text.h"
#include "ui/form.h"

namespace quillane {

/// "Applied Load": if the first option is checked, presses apply the force. Typing checks it.
class frmAppliedLoad : public NumberForm {
 public:
  explicit frmAppliedLoad(frmMain& main) : NumberForm(main, {"frmAppliedLoad", "Applied Load"}) {
    LayOut(OptionFrame({optLoadOn, optLoadOff}),
           {{"", "Force-X: ", ForceBox("txtLoadX", main.model().LoadFx), ""},
            {"", "Force-Y: ", ForceBox("txtLoadY", main.model().LoadFy), ""}});
    optLoadOff->setChecked(true);
  }

 private:
  QLineEdit* ForceBox(const char* name, Double force) {
    QLineEdit* box = NumberBox(name, GeneralText(force));
    connect(box, &QLineEdit::textEdited, optLoadOn, [this] { optLoadOn->setChecked(true); });
    return box;
  }

  std::optional<Refusal> Store(const Texts& texts) override {
    const RefusedIndex refused = SetAppliedLoad(Main().model(), texts[0], texts[1]);
    if (!refused && optLoadOn->isChecked()) Main().SetEditMode(*this, kModeLoad);
    return TooLarge(refused);
  }

  std::string Caption() const override {
    const Model& model = Main().model();
    return "x方向荷重成分 = " + GeneralText(model.LoadFx) +
           "N   y方向荷重成分 = " + GeneralText(model.LoadFy) + "N";
  }

  QRadioButton* optLoadOn = Option("optLoadOn", "Specify the applied loads");
  QRadioButton* optLoadOff = Option("optLoadOff", "Nothing");
};

}  // namespace quillane
