// The base of the dialogs that choose what presses on the canvas do.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "ui/form.h"

namespace quillane {

/// Asks a question with options, of which the last one is checked at first. OK begins the edit mode
/// of the checked one.
class ModeForm : public Form {
  Q_OBJECT

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

}  // namespace quillane
