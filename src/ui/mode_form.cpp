#include "ui/mode_form.h"

#include <QRadioButton>

namespace quillane {

ModeForm::ModeForm(frmMain& main, const FormNames& names, const char* question,
                   const std::vector<ModeOption>& options)
    : Form(main, names) {
  QList<QRadioButton*> buttons;
  for (const ModeOption& option : options) {
    buttons += Option(option.name, option.caption);
    options_.emplace_back(buttons.back(), option.mode);
  }
  LayOutChoice(question, buttons, Button("cmdOK", "OK", &ModeForm::cmdOK_Click));
  buttons.back()->setChecked(true);
  buttons.back()->setFocus();
}

void ModeForm::cmdOK_Click() {
  for (const auto& [button, mode] : options_) {
    if (button->isChecked() && mode) Main().SetEditMode(*this, *mode);
  }
  Unload();
}

}  // namespace quillane
