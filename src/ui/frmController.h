// The dialog for the parameters of the optimization.
#pragma once

#include "ui/number_form.h"

namespace quillane {

/// "Optimization Parameter".
class frmController : public NumberForm {
 public:
  explicit frmController(frmMain& main);

 private:
  RefusedIndex Store(const Texts& texts) override;
  std::string Caption() const override;
};

}  // namespace quillane
