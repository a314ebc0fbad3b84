// Choice of the result map.
#include "ui/frmImageIndicator.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "ui/frmMain.h"

namespace quillane {

frmImageIndicator::frmImageIndicator(frmMain& main) : Form(main, "frmImageIndicator", "Graphics") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Choose what you want to show."));
  rows->addWidget(OptionFrame({optStressValue, optNeuronValue}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmImageIndicator::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmImageIndicator::cmdExit_Click);
  Form_Load();
}

void frmImageIndicator::Form_Load() {
  QRadioButton* shown =
      Main().model().DisplayMode == kShowPotential ? optNeuronValue : optStressValue;
  shown->setChecked(true);
  shown->setFocus();
}

void frmImageIndicator::cmdOK_Click() {
  Main().Guarded([this] {
    if (optStressValue->isChecked()) {
      Main().model().DisplayMode = kShowStress;
      Main().DrawStressMap();
    } else {
      Main().model().DisplayMode = kShowPotential;
      Main().DrawNeuronMap();
    }
  });
  Unload();
}

}  // namespace quillane
