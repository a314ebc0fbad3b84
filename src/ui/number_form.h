// The base of the dialogs that enter numbers.
#pragma once

#include <string>
#include <vector>

#include "edit/settings.h"
#include "ui/form.h"

namespace quillane {

/// Ends the edit mode when loaded. OK stores the numbers and shows them in lblUpDate; a number too
/// large for its type is refused.
class NumberForm : public Form {
  Q_OBJECT

 protected:
  using Texts = std::vector<std::string>;

  NumberForm(frmMain& main, const FormNames& names);

  /// Lays out the fields below the widget `above`, which may be null.
  void LayOut(QWidget* above, const std::vector<Field>& fields);

  /// Stores the texts of the boxes, in the order of the fields.
  virtual RefusedIndex Store(const Texts& texts) = 0;
  /// Returns the caption of lblUpDate after OK.
  virtual std::string Caption() const = 0;

 private:
  void cmdOK_Click();

  std::vector<QLineEdit*> boxes_;
};

}  // namespace quillane
