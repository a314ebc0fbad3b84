// Sizes follow the font; nothing is in pixels.
#include "ui/form.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/message_box.h"

namespace quillane {
namespace {

std::string TextOf(const QLineEdit* box) { return box->text().toStdString(); }

/// Shows by colour and tooltip what the text is read as, if it is not read as it looks.
void TellReading(QLineEdit* box, NumberRule rule) {
  const QString told = QString::fromStdString(ReadingHint(TextOf(box), rule));
  QPalette colours;
  if (!told.isEmpty()) {
    colours.setColor(QPalette::Base, QColor(255, 200, 140));
    colours.setColor(QPalette::Text, Qt::black);
  }
  box->setPalette(colours);
  box->setToolTip(told);
  box->setAccessibleDescription(told);
  if (box->isVisible()) {
    QToolTip::showText(box->mapToGlobal(box->rect().bottomLeft()), told, box);
  }
}

}  // namespace

Form::Form(frmMain& main, const FormNames& names)
    : QDialog(&main, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowCloseButtonHint),
      main_(main),
      cancel_(Button(names.cancel, "Cancel")) {
  connect(cancel_, &QPushButton::clicked, this, &Form::reject);
  setObjectName(names.name);
  setWindowTitle(names.caption);
  setWindowModality(Qt::ApplicationModal);
}

QLabel* Form::Label(const char* caption) {
  auto* label = new QLabel(caption, this);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLineEdit* Form::NumberBox(const char* name, const std::string& text, NumberRule rule) {
  auto* box = new QLineEdit(QString::fromStdString(text), this);
  box->setObjectName(name);
  box->setAlignment(Qt::AlignRight);
  connect(box, &QLineEdit::textChanged, box, [box, rule] { TellReading(box, rule); });
  TellReading(box, rule);
  return box;
}

QRadioButton* Form::Option(const char* name, const char* caption) {
  auto* option = new QRadioButton(caption, this);
  option->setObjectName(name);
  return option;
}

QPushButton* Form::Button(const char* name, const char* caption) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  return button;
}

QWidget* Form::OptionFrame(const QList<QRadioButton*>& options) {
  auto* column = new QVBoxLayout;
  for (QRadioButton* option : options) column->addWidget(option);
  auto* frame = new QGroupBox(this);
  frame->setLayout(column);
  return frame;
}

QLayout* Form::ButtonRow(QPushButton* action) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
  row->addStretch();
  const int width = std::max(action->sizeHint().width(), cancel_->sizeHint().width());
  for (QPushButton* button : {action, cancel_}) {
    button->setMinimumWidth(width);
    row->addWidget(button);
  }
  action->setDefault(true);
  setTabOrder(action, cancel_);
  return row;
}

void Form::LayOutChoice(const char* question, const QList<QRadioButton*>& options,
                        QPushButton* action) {
  QVBoxLayout* rows = Rows();
  rows->addWidget(Label(question));
  rows->addWidget(OptionFrame(options));
  rows->addLayout(ButtonRow(action));
}

QVBoxLayout* Form::Rows() {
  auto* rows = new QVBoxLayout(this);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  const int roomBesideTheTitle = 8 * fontMetrics().height();
  rows->addStrut(fontMetrics().horizontalAdvance(windowTitle()) + roomBesideTheTitle);
  return rows;
}

void FocusText(QLineEdit* box) {
  box->setFocus();
  box->selectAll();
}

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

NumberForm::NumberForm(frmMain& main, const FormNames& names) : Form(main, names) {
  main.SetEditMode(*this, kModeNothing);
}

void NumberForm::LayOut(QWidget* above, const std::vector<Field>& fields) {
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  const auto isGiven = [](const char* text) { return *text != '\0'; };
  int row = 0;
  for (const auto& [heading, caption, box, unit] : fields) {
    boxes_.push_back(box);
    if (isGiven(heading)) grid->addWidget(Label(heading), row++, 0, 1, 3);
    if (isGiven(caption)) {
      QLabel* label = Label(caption);
      label->setBuddy(box);
      grid->addWidget(label, row, 0);
    }
    grid->addWidget(box, row, 1);
    if (isGiven(unit)) grid->addWidget(Label(unit), row, 2);
    ++row;
  }
  QVBoxLayout* rows = Rows();
  if (above != nullptr) rows->addWidget(above);
  rows->addLayout(grid);
  rows->addLayout(ButtonRow(Button("cmdOK", "OK", &NumberForm::cmdOK_Click)));
  FocusText(boxes_.front());
}

std::optional<NumberForm::Refusal> NumberForm::TooLarge(RefusedIndex refused) {
  if (!refused) return std::nullopt;
  return Refusal{*refused, "数値が大きすぎます。\n値を変えてください。"};
}

void NumberForm::cmdOK_Click() {
  Texts texts;
  for (const QLineEdit* box : boxes_) texts.push_back(TextOf(box));
  if (const std::optional<Refusal> refused = Store(texts)) {
    Warn(this, refused->why);
    return FocusText(boxes_[static_cast<std::size_t>(refused->index)]);
  }
  Main().SetUpDateCaption(Caption());
  Unload();
}

}  // namespace quillane
