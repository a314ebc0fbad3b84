#include "display/view.h"

#include <algorithm>
#include <cmath>

#include "model/numbers.h"

namespace quillane {

void FitView(Model& model, double canvasWidth, double canvasHeight) {
  const double width{model.DomainWidth};
  model.DomainHeight = ToSingle(width * canvasHeight / canvasWidth, "The height of the area shown");
  model.ViewRight = ToSingle(double{model.OriginFracX} * width, "The right edge of the view");
  model.ViewTop =
      ToSingle(double{model.OriginFracY} * double{model.DomainHeight}, "The top edge of the view");
}

void FrameDomain(Model& model, double canvasWidth, double canvasHeight) {
  constexpr double kRoom = 1.15;
  const double width = std::fabs(double{model.DomainX2} - double{model.DomainX1});
  const double height = std::fabs(double{model.DomainY2} - double{model.DomainY1});
  const double aspect = canvasHeight / canvasWidth;
  const double shown = kRoom * std::max(width, height / aspect);
  const double right = (double{model.DomainX1} + double{model.DomainX2} + shown) / 2;
  const double top = (double{model.DomainY1} + double{model.DomainY2} + shown * aspect) / 2;
  model.DomainWidth = ToSingle(shown, "The width of the area shown");
  model.OriginFracX = ToSingle(right / shown, "The origin's place in the view");
  model.OriginFracY = ToSingle(top / (shown * aspect), "The origin's place in the view");
}

UserScale CanvasScale(const Model& model) {
  const Single left = model.ViewRight - model.DomainWidth;
  const Single bottom = model.ViewTop - model.DomainHeight;
  return {double{left}, double{model.ViewTop}, double{model.ViewRight}, double{bottom}};
}

}  // namespace quillane
