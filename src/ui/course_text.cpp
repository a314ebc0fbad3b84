#include "ui/course_text.h"

#include <QStringList>

#include "fem/element_stiffness.h"
#include "ui/error_text.h"

namespace quillane {
namespace {

/// Names the state `steps` steps ago: the FEA, or the step before it.
QString Since(const Model& model, int steps) {
  const int step = model.StepCount - 1 - steps;
  return step < 0 ? QStringLiteral("the FEA") : QStringLiteral("step %1").arg(step);
}

QString LayoutLine(const Course& course) {
  const Model& model = course.State();
  if (model.StepCount == 0) return QStringLiteral("No step since the FEA.");
  const std::optional<Repetition> repetition = course.Repeats();
  if (!repetition) {
    return QStringLiteral("Cells changed in the last step: %1").arg(course.Figures().cellsChanged);
  }
  return repetition->cycle == 1
             ? QStringLiteral("The layout has not changed since %1.")
                   .arg(Since(model, repetition->steps))
             : QStringLiteral("The layout comes back every %1 steps.").arg(repetition->cycle);
}

}  // namespace

QString CourseText(const EditState& edits, const Course& course) {
  const Model& model = course.State();
  const CourseFigures& figures = course.Figures();
  QStringList lines;
  if (figures.startVolume > 0) {
    lines += QStringLiteral("Volume: %1% of that at the last FEA")
                 .arg(100 * model.Volume / figures.startVolume, 0, 'f', 1);
  }
  lines += QStringLiteral("Stress: mean %1, largest %2 MPa")
               .arg(model.AvgStress, 0, 'g', 4)
               .arg(model.MaxStress, 0, 'g', 4);
  lines += LayoutLine(course);
  if (const int solves = figures.unconvergedInARow; solves > 0) {
    lines += QStringLiteral("The solver has not converged since %1:").arg(Since(model, solves - 1));
    // Steps can disconnect loads; an analysis that does not converge shows a fault of the model.
    lines += solves <= model.StepCount
                 ? QStringLiteral("open the last saved model, lower the target.")
             : !LoadsAreCarried(model) ? QStringLiteral("check the supports (Freedom Conditions).")
             : !IsPoissonRatio(model.PoissonRatio)
                 ? QStringLiteral("check Poisson's ratio (Design Property).")
                 : QStringLiteral("use more cells across the plate's members.");
  }
  if (edits.changedSinceAnalysis) lines += QStringLiteral("Changed by hand since the last FEA.");
  if (StepCounterIsFull(model)) {
    lines += QStringLiteral("The step counter is full: FEA starts it anew.");
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace quillane
