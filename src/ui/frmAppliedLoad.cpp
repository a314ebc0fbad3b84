#include "ui/frmAppliedLoad.h"

#include <QLineEdit>
#include <QRadioButton>

#include "model/number_text.h"

namespace quillane {

frmAppliedLoad::frmAppliedLoad(frmMain& main)
    : NumberForm(main, {"frmAppliedLoad", "Applied Load"}) {
  const auto box = [&](const char* name, Double force) {
    QLineEdit* forceBox = NumberBox(name, GeneralText(force));
    connect(forceBox, &QLineEdit::textEdited, optLoadOn, [this] { optLoadOn->setChecked(true); });
    return forceBox;
  };
  LayOut(OptionFrame({optLoadOn, optLoadOff}),
         {{"", "Force-X: ", box("txtLoadX", main.model().LoadFx), ""},
          {"", "Force-Y: ", box("txtLoadY", main.model().LoadFy), ""}});
  optLoadOff->setChecked(true);
}

RefusedIndex frmAppliedLoad::Store(const Texts& texts) {
  const RefusedIndex refused = SetAppliedLoad(Main().model(), texts[0], texts[1]);
  if (!refused && optLoadOn->isChecked()) Main().SetEditMode(*this, kModeLoad);
  return refused;
}

std::string frmAppliedLoad::Caption() const {
  const Model& model = Main().model();
  return "x方向荷重成分 = " + GeneralText(model.LoadFx) +
         "N   y方向荷重成分 = " + GeneralText(model.LoadFy) + "N";
}

}  // namespace quillane
