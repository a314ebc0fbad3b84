// The dialog for the width that the canvas shows and the size of a cell.
#pragma once

#include "ui/form.h"

namespace quillane {

/// "Width and Mesh Density": OK also sets the view up anew. Values that no grid can be drawn with
/// are refused.
class frmWidth : public NumberForm {
 public:
  explicit frmWidth(frmMain& main);

 private:
  std::optional<Refusal> Store(const Texts& texts) override;
  std::string Caption() const override { return Main().Summary(); }
};

}  // namespace quillane
