// The bases of the dialogs: construction, names and look of controls, closing.
#pragma once

#include <QDialog>
#include <QPushButton>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "edit/settings.h"
#include "ui/frmMain.h"

class QLabel;
class QLayout;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

namespace quillane {

struct FormNames {
  const char* name;  ///< also that of the class
  const char* caption;
  const char* cancel = "cmdExit";  ///< name of the Cancel button
};

/// A dialog above the main window, modal to the application, created anew at each use. Its Cancel
/// button, Escape and the title bar's close button all call reject, which closes it and stores
/// nothing.
class Form : public QDialog {
  Q_OBJECT

 protected:
  Form(frmMain& main, const FormNames& names);

  frmMain& Main() const { return main_; }

  // Create a control; all but labels get an object name.
  QLabel* Label(const char* caption);
  /// Creates a box whose colour and tooltip change when its text is not read as it looks.
  QLineEdit* NumberBox(const char* name, const std::string& text,
                       NumberRule rule = NumberRule::kAny);
  QRadioButton* Option(const char* name, const char* caption);
  QPushButton* Button(const char* name, const char* caption);
  /// Also connects the clicks to the dialog's handler.
  template <class Dialog>
  QPushButton* Button(const char* name, const char* caption, void (Dialog::*handler)()) {
    QPushButton* button = Button(name, caption);
    connect(button, &QPushButton::clicked, this,
            Main().OrWarn(static_cast<Dialog*>(this), handler));
    return button;
  }

  /// Returns a frame with the options in rows, of which one is checked at a time.
  QWidget* OptionFrame(const QList<QRadioButton*>& options);

  /// Returns a row with the button and Cancel at the right; Enter presses the first.
  QLayout* ButtonRow(QPushButton* action);

  /// Lays out a question, its options and the button, from top to bottom.
  void LayOutChoice(const char* question, const QList<QRadioButton*>& options, QPushButton* action);

  /// Sets and returns the dialog's vertical layout, which fixes its size to its contents.
  QVBoxLayout* Rows();

  void Unload() { done(0); }

  QPushButton* Cancel() { return cancel_; }

 private:
  frmMain& main_;
  QPushButton* cancel_;
};

/// Focuses a box and selects its text.
void FocusText(QLineEdit* box);

/// Asks a question with options, of which the last one is checked at first. OK begins the edit mode
/// of the checked one.
class ModeForm : public Form {
 protected:
  struct ModeOption {
    const char* name;
    const char* caption;
    std::optional<Integer> mode;  ///< none: the mode stays
  };

  ModeForm(frmMain& main, const FormNames& names, const char* question,
           const std::vector<ModeOption>& options);

 private:
  void cmdOK_Click();

  std::vector<std::pair<QRadioButton*, std::optional<Integer>>> options_;
};

/// Ends the edit mode when loaded. OK stores the numbers and shows them in lblUpDate, or refuses
/// one with a warning.
class NumberForm : public Form {
 protected:
  using Texts = std::vector<std::string>;

  /// A box and its texts; empty texts are omitted.
  struct Field {
    const char* heading;  ///< in a row of its own above the box
    const char* label;    ///< left of the box
    QLineEdit* box;
    const char* unit;  ///< right of the box
  };

  /// The index of a refused text, and why.
  struct Refusal {
    int index;
    QString why;
  };

  NumberForm(frmMain& main, const FormNames& names);

  /// Lays out the fields in rows, with labels, boxes and units aligned, below the widget `above`,
  /// which may be null.
  void LayOut(QWidget* above, const std::vector<Field>& fields);

  /// Stores the texts of the boxes, in the order of the fields, or nothing.
  virtual std::optional<Refusal> Store(const Texts& texts) = 0;
  /// Returns the refusal of a number too large for its type, if there is one.
  static std::optional<Refusal> TooLarge(RefusedIndex refused);
  /// Returns the caption of lblUpDate after OK.
  virtual std::string Caption() const = 0;

 private:
  void cmdOK_Click();

  std::vector<QLineEdit*> boxes_;
};

}  // namespace quillane
