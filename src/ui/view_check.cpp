// A trial of the view and the grid that leaves the model alone.
#include "ui/view_check.h"

#include "display/canvas_layout.h"
#include "model/numbers.h"
#include "model/run_time_error.h"

namespace quillane {

bool IsDrawable(const Model& model, Single domainWidth, Single elementSize, double canvasWidth,
                double canvasHeight) {
  Model trial;
  trial.OriginFracX = model.OriginFracX;
  trial.OriginFracY = model.OriginFracY;
  trial.DomainWidth = domainWidth;
  try {
    FitView(trial, canvasWidth, canvasHeight);
    const double edges[] = {double{trial.ViewRight}, double{trial.ViewTop},
                            double{trial.ViewRight} - double{trial.DomainWidth},
                            double{trial.ViewTop} - double{trial.DomainHeight}};
    for (const double edge : edges) ToInteger(edge / double{elementSize}, "the grid lines' number");
  } catch (const RunTimeError&) {
    return false;
  }
  return trial.DomainHeight > 0;
}

}  // namespace quillane
