// Entry of the material.
#include "ui/frmMaterial.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/number_text.h"
#include "ui/frmMain.h"

namespace quillane {

frmMaterial::frmMaterial(frmMain& main) : Form(main, "frmMaterial", "Design Property") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Specify Design Property Values"));
  rows->addLayout(FieldGrid({{"", "Modulus of Elasticity: ", txtEmod, "MPa"},
                             {"", "Thickness: ", txtThickness, "mm"},
                             {"", "Poissons Ratio: ", txtPoison, ""}}));
  rows->addLayout(ButtonRow({cmdOK, cmdExit}));
  connect(cmdOK, &QPushButton::clicked, this, &frmMaterial::cmdOK_Click);
  connect(cmdExit, &QPushButton::clicked, this, &frmMaterial::cmdExit_Click);
  Form_Load();
}

void frmMaterial::Form_Load() {
  Model& model = Main().model();
  model.EditMode = kModeNothing;
  txtThickness->setText(QString::fromStdString(GeneralText(model.Thickness)));
  txtEmod->setText(QString::fromStdString(GeneralText(model.YoungModulus)));
  txtPoison->setText(QString::fromStdString(GeneralText(model.PoissonRatio)));
  FocusText(txtEmod);
}

void frmMaterial::cmdOK_Click() {
  Main().Guarded([this] {
    Model& model = Main().model();
    model.YoungModulus = LeadingNumber(TextOf(txtEmod), "the modulus of elasticity");
    model.Thickness = LeadingNumber(TextOf(txtThickness), "the thickness");
    model.PoissonRatio = LeadingNumber(TextOf(txtPoison), "Poisson's ratio");
    Main().SetUpDateCaption(QString::fromStdString(
        "ヤング率 = " + GeneralText(model.YoungModulus) + "MPa  板厚 = " +
        GeneralText(model.Thickness) + "mm  ポアソン比 = " + GeneralText(model.PoissonRatio)));
  });
  Unload();
}

}  // namespace quillane
