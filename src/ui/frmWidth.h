// The dialog for the width that the canvas shows and the size of a cell.
#pragma once

#include "display/grid.h"
#include "display/view.h"
#include "model/number_text.h"
#include "ui/canvas_view.h"
#include "ui/form.h"

namespace quillane {

/// "Width and Mesh Density": OK also sets the view up anew. Values that no grid can be drawn with
/// are refused.
class frmWidth : public NumberForm {
 public:
  explicit frmWidth(frmMain& main)
      : NumberForm(main, {"frmWidth", "Width and Mesh Density", "cmdCancel"}) {
    const auto box = [this](const char* name, Single value) {
      return NumberBox(name, GeneralText(value), NumberRule::kAboveZero);
    };
    LayOut(nullptr, {{"Enter display area Width in mm units.", "",
                      box("txtWidth", main.model().DomainWidth), "mm"},
                     {"Enter element-Size in mm units.", "",
                      box("txtUnitGrid", main.model().ElementSize), "mm"}});
  }

 private:
  /// Returns whether a view with these lengths and the origin fractions of the model can be drawn.
  static bool CanBeShown(const Model& model, QSize canvas, Single width, Single elementSize) {
    Model trial;
    trial.OriginFracX = model.OriginFracX;
    trial.OriginFracY = model.OriginFracY;
    trial.DomainWidth = width;
    try {
      FitView(trial, canvas.width(), canvas.height());
    } catch (const RunTimeError&) {
      return false;
    }
    return GridIsDrawable(elementSize, CanvasScale(trial));
  }

  std::optional<Refusal> Store(const Texts& texts) override {
    const Single width = PositiveLength(texts[0]), elementSize = PositiveLength(texts[1]);
    if (width == 0) return Refusal{0, "表示幅には0より大きい数値を入力してください。"};
    if (elementSize == 0) {
      return Refusal{1, "要素サイズには0より大きい数値を入力してください。"};
    }
    if (!CanBeShown(Main().model(), Main().View().Canvas()->size(), width, elementSize)) {
      return Refusal{1,
                     "この表示幅と要素サイズでは格子を描くことができません。\n"
                     "値を変えてください。"};
    }
    SetGrid(Main().model(), Main().Edits(), width, elementSize);
    Main().View().FitAndShowModel();
    return std::nullopt;
  }

  std::string Caption() const override { return Main().Summary(); }
};

}  // namespace quillane
