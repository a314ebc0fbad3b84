// The dialog that picks which value presses on the canvas read out.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Values": OK sets the read-out's editing mode; "Nothing" leaves the mode as it is.
class frmValueIndicator : public Form {
  Q_OBJECT

 public:
  explicit frmValueIndicator(frmMain& main);

 private:
  void Form_Load();
  void cmdOK_Click();

  QRadioButton* optLoadValue = Option("optLoadValue", "Applied Load value");
  QRadioButton* optDisplacementValue = Option("optDisplacementValue", "Displacement value");
  QRadioButton* optStressValue = Option("optStressValue", "von Mises Stress value");
  QRadioButton* optNeuronValue = Option("optNeuronValue", "Potential value");
  QRadioButton* optDoNot = Option("optDoNot", "Nothing");
  QPushButton* cmdOK = Button("cmdOK", "OK", &frmValueIndicator::cmdOK_Click);
};

}  // namespace quillane
