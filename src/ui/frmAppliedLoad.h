// The dialog that takes the force which presses on nodes apply.
#pragma once

#include "ui/number_form.h"

namespace quillane {

/// "Applied Load": if the first option is checked, presses apply the force. Typing checks it.
class frmAppliedLoad : public NumberForm {
 public:
  explicit frmAppliedLoad(frmMain& main);

 private:
  RefusedIndex Store(const Texts& texts) override;
  std::string Caption() const override;

  QRadioButton* optLoadOn = Option("optLoadOn", "Specify the applied loads");
  QRadioButton* optLoadOff = Option("optLoadOff", "Nothing");
};

}  // namespace quillane
