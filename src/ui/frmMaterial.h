// The dialog for the plate's material and thickness.
#pragma once

#include "ui/number_form.h"

namespace quillane {

/// "Design Property".
class frmMaterial : public NumberForm {
 public:
  explicit frmMaterial(frmMain& main);

 private:
  RefusedIndex Store(const Texts& texts) override;
  std::string Caption() const override;
};

}  // namespace quillane
