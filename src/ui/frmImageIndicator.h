// The dialog that switches between the result maps.
#pragma once

#include <QRadioButton>

#include "ui/form.h"

namespace quillane {

/// "Graphics": OK draws the chosen map, which the optimization steps to come then show too.
class frmImageIndicator : public Form {
 public:
  explicit frmImageIndicator(frmMain& main) : Form(main, {"frmImageIndicator", "Graphics"}) {
    LayOutChoice("Choose what you want to show.", {optStressValue, optNeuronValue},
                 Button("cmdOK", "OK", &frmImageIndicator::cmdOK_Click));
    const bool isPotential = main.model().DisplayMode == kShowPotential;
    QRadioButton* shown = isPotential ? optNeuronValue : optStressValue;
    shown->setChecked(true);
    shown->setFocus();
  }

 private:
  void cmdOK_Click() {
    Main().model().DisplayMode = optStressValue->isChecked() ? kShowStress : kShowPotential;
    Main().ShowMap();
    Unload();
  }

  QRadioButton* optStressValue = Option("optStressValue", "von Mises Stress");
  QRadioButton* optNeuronValue = Option("optNeuronValue", "Potential");
};

}  // namespace quillane
