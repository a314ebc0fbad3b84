#include "ui/frmMaterial.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "edit/settings.h"
#include "model/number_text.h"
#include "ui/error_text.h"

namespace quillane {

frmMaterial::frmMaterial(frmMain& main) : Form(main, "frmMaterial", "Design Property") {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label("Specify Design Property Values"));
  rows->addLayout(FieldGrid({{"", "Modulus of Elasticity: ", txtEmod, "MPa"},
                             {"", "Thickness: ", txtThickness, "mm"},
                             {"", "Poissons Ratio: ", txtPoison, ""}}));
  rows->addLayout(ButtonRow(cmdOK));
  Form_Load();
}

void frmMaterial::Form_Load() {
  const Model& model = Main().model();
  Main().SetEditMode(*this, kModeNothing);
  txtThickness->setText(QString::fromStdString(GeneralText(model.Thickness)));
  txtEmod->setText(QString::fromStdString(GeneralText(model.YoungModulus)));
  txtPoison->setText(QString::fromStdString(GeneralText(model.PoissonRatio)));
  FocusText(txtEmod);
}

void frmMaterial::cmdOK_Click() {
  Model& model = Main().model();
  if (const RefusedIndex refused = SetMaterial(model, Main().Edits(), TextOf(txtEmod),
                                               TextOf(txtThickness), TextOf(txtPoison))) {
    QLineEdit* const boxes[] = {txtEmod, txtThickness, txtPoison};
    return Refuse(boxes[*refused], TooLargeText());
  }
  Main().SetUpDateCaption(QString::fromStdString(
      "ヤング率 = " + GeneralText(model.YoungModulus) + "MPa  板厚 = " +
      GeneralText(model.Thickness) + "mm  ポアソン比 = " + GeneralText(model.PoissonRatio)));
  Unload();
}

}  // namespace quillane
