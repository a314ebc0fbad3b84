// What every dialog shares: its making, the names and look of its controls, and how it closes.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <initializer_list>
#include <string>

#include "ui/frmMain.h"

class QLabel;
class QLayout;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

namespace quillane {

/// A dialog above the main window, modal to the application, made afresh at each use. Its name is
/// its class's. Its Cancel button, Escape and the title bar's close button all call reject, which
/// closes it and stores nothing.
class Form : public QDialog {
  Q_OBJECT

 protected:
  /// cancelName: the name of the Cancel button.
  Form(frmMain& main, const char* name, const char* caption, const char* cancelName = "cmdExit");

  frmMain& Main() { return main_; }

  // Controls under their own names, for the initializers of the members that hold them.
  QLabel* Label(const char* caption);
  QLineEdit* NumberBox(const char* name, const char* text = "");
  QRadioButton* Option(const char* name, const char* caption);
  QPushButton* Button(const char* name, const char* caption);
  /// Calls the dialog's handler at each click.
  template <class Dialog>
  QPushButton* Button(const char* name, const char* caption, void (Dialog::*handler)()) {
    QPushButton* button = Button(name, caption);
    connect(button, &QPushButton::clicked, this,
            Main().Guarded(static_cast<Dialog*>(this), handler));
    return button;
  }

  /// A box with what belongs to it; a text that is empty is left out.
  struct Field {
    const char* heading;  ///< in a row of its own above the box
    const char* label;    ///< left of the box
    QLineEdit* box;
    const char* unit;  ///< right of the box
  };
  /// The fields under each other, their labels, boxes and units aligned.
  QLayout* FieldGrid(std::initializer_list<Field> fields);

  /// The options under each other in a frame; one of them is chosen at a time.
  QWidget* OptionFrame(std::initializer_list<QRadioButton*> options);

  /// The button and Cancel side by side at the right; Enter presses the first.
  QLayout* ButtonRow(QPushButton* action);

  /// Lays out a question, its options and the button, from top to bottom.
  void LayOutChoice(const char* question, std::initializer_list<QRadioButton*> options,
                    QPushButton* action);

  /// The dialog's layout from top to bottom, which fixes its size to its contents.
  QVBoxLayout* Rows();

  /// Asks for another value in the box, in a warning box.
  void Refuse(QLineEdit* box, const QString& why);

  void Unload() { done(0); }

  QPushButton* Cancel() { return cancel_; }

 private:
  frmMain& main_;
  QPushButton* cancel_;
};

/// A box's text as UTF-8.
std::string TextOf(const QLineEdit* box);

/// Gives a box the keyboard, its text selected.
void FocusText(QLineEdit* box);

}  // namespace quillane
