#include "ui/course_text.h"

#include <QStringList>

#include "fem/element_stiffness.h"
#include "ui/error_text.h"

namespace quillane {
namespace {

/// Names the state `steps` steps ago: the FEA, or the step before it.
QString Since(const Model& model, int steps) {
  const int step = model.StepCount - 1 - steps;
  return step < 0 ? "the FEA" : QString("step %1").arg(step);
}

QString LayoutLine(const Course& course) {
  const Model& model = course.State();
  if (model.StepCount == 0) return "No step since the FEA.";
  const std::optional<Repetition> repetition = course.Repeats();
  if (!repetition) {
    return QString("Cells changed in the last step: %1").arg(course.Figures().cellsChanged);
  }
  return repetition->cycle == 1
             ? QString("The layout has not changed since %1.").arg(Since(model, repetition->steps))
             : QString("The layout comes back every %1 steps.").arg(repetition->cycle);
}

}  // namespace

QString CourseText(const EditState& edits, const Course& course) {
  const Model& model = course.State();
  const CourseFigures& figures = course.Figures();
  QStringList lines;
  if (figures.startVolume > 0) {
    lines += QString("Volume: %1% of that at the last FEA")
                 .arg(100 * model.Volume / figures.startVolume, 0, 'f', 1);
  }
  lines += QString("Stress: mean %1, largest %2 MPa")
               .arg(model.AvgStress, 0, 'g', 4)
               .arg(model.MaxStress, 0, 'g', 4);
  lines += LayoutLine(course);
  if (const int solves = figures.unconvergedInARow; solves > 0) {
    lines += QString("The solver has not converged since %1:").arg(Since(model, solves - 1));
    // Steps can disconnect loads; an analysis that does not converge shows a fault of the model.
    lines += solves <= model.StepCount             ? "open the last saved model, lower the target."
             : !LoadsAreCarried(model)             ? "check the supports (Freedom Conditions)."
             : !IsPoissonRatio(model.PoissonRatio) ? "check Poisson's ratio (Design Property)."
                                                   : "use more cells across the plate's members.";
  }
  if (edits.changedSinceAnalysis) lines += "Changed by hand since the last FEA.";
  if (StepCounterIsFull(model)) {
    lines += "The step counter is full: FEA starts it anew.";
  }
  return lines.join(u'\n');
}

}  // namespace quillane
