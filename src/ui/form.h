// What every dialog shares: its making, the names and look of its controls, and how it closes.
#pragma once

#include <QDialog>
#include <initializer_list>
#include <string>

class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace quillane {

class frmMain;

/// A dialog above the main window, modal to the application, made afresh at each use. Its name is
/// its class's. Escape and the title bar's close button do what its cancel button does, through
/// reject.
class Form : public QDialog {
  Q_OBJECT

 protected:
  Form(frmMain& main, const char* name, const char* caption);

  frmMain& Main() { return main_; }

  // Controls under their own names, for the initializers of the members that hold them.
  QLabel* Label(const char* caption);
  QLineEdit* NumberBox(const char* name, const char* text = "");
  QRadioButton* Option(const char* name, const char* caption);
  QPushButton* Button(const char* name, const char* caption);

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

  /// The buttons side by side at the right; Enter presses the first.
  QLayout* ButtonRow(std::initializer_list<QPushButton*> buttons);

  /// The dialog's layout from top to bottom, which fixes its size to its contents.
  QVBoxLayout* Rows();

  void Unload() { done(0); }

 private:
  frmMain& main_;
};

/// A box's text as UTF-8.
std::string TextOf(const QLineEdit* box);

/// Gives a box the keyboard, its text selected.
void FocusText(QLineEdit* box);

}  // namespace quillane
