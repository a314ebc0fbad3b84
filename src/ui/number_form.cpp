#include "ui/number_form.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/error_text.h"

namespace quillane {

NumberForm::NumberForm(frmMain& main, const FormNames& names) : Form(main, names) {
  main.SetEditMode(*this, kModeNothing);
}

void NumberForm::LayOut(QWidget* above, const std::vector<Field>& fields) {
  QVBoxLayout* rows = Rows();
  if (above != nullptr) rows->addWidget(above);
  rows->addLayout(FieldGrid(fields));
  rows->addLayout(ButtonRow(Button("cmdOK", "OK", &NumberForm::cmdOK_Click)));
  for (const Field& field : fields) boxes_.push_back(field.box);
  FocusText(boxes_.front());
}

void NumberForm::cmdOK_Click() {
  Texts texts;
  for (const QLineEdit* box : boxes_) texts.push_back(TextOf(box));
  if (const RefusedIndex refused = Store(texts)) {
    return Refuse(boxes_[static_cast<std::size_t>(*refused)], TooLargeText());
  }
  Main().SetUpDateCaption(QString::fromStdString(Caption()));
  Unload();
}

}  // namespace quillane
