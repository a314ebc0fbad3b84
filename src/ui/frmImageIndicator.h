// The dialog that switches between the result maps.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Graphics": OK draws the chosen map, which the optimization steps to come then show too.
class frmImageIndicator : public Form {
  Q_OBJECT

 public:
  explicit frmImageIndicator(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QRadioButton* optStressValue = Option("optStressValue", "von Mises Stress");
  QRadioButton* optNeuronValue = Option("optNeuronValue", "Potential");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmImageIndicator::cmdOK_Click);
};

}  // namespace quillane
