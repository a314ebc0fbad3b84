#include "display/view.h"

#include "model/numbers.h"

namespace quillane {

void FitView(Model& model, double canvasWidth, double canvasHeight) {
  const auto width = static_cast<double>(model.DomainWidth);
  model.DomainHeight = ToSingle(width * canvasHeight / canvasWidth, "The height of the area shown");
  model.ViewRight =
      ToSingle(static_cast<double>(model.OriginFracX) * width, "The right edge of the view");
  model.ViewTop =
      ToSingle(static_cast<double>(model.OriginFracY) * static_cast<double>(model.DomainHeight),
               "The top edge of the view");
}

UserScale CanvasScale(const Model& model) {
  const Single left = model.ViewRight - model.DomainWidth;
  const Single bottom = model.ViewTop - model.DomainHeight;
  return {static_cast<double>(left), static_cast<double>(model.ViewTop),
          static_cast<double>(model.ViewRight), static_cast<double>(bottom)};
}

}  // namespace quillane
