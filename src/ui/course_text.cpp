#include "ui/course_text.h"

#include <QStringList>

#include "optimize/optimization_step.h"

namespace quillane {
namespace {

/// The state `steps` steps ago: the FEA or the step that it followed.
QString Since(const Model& model, int steps) {
  const int step = model.StepCount - 1 - steps;
  return step < 0 ? QStringLiteral("the FEA") : QStringLiteral("step %1").arg(step);
}

QString LayoutLine(const Model& model, const OptimizationCourse& course) {
  if (model.StepCount == 0) return QStringLiteral("No step since the FEA.");
  if (const int steps = course.RepeatedSteps(); steps > 0) {
    return QStringLiteral("The layout has not changed since %1.").arg(Since(model, steps));
  }
  for (int cycle = 2; cycle <= OptimizationCourse::kLongestCycle; ++cycle) {
    if (course.RepeatedSteps(cycle) >= cycle) {
      return QStringLiteral("The layout comes back every %1 steps.").arg(cycle);
    }
  }
  return QStringLiteral("Cells changed in the last step: %1").arg(course.CellsChanged());
}

}  // namespace

QString CourseText(const Model& model, const EditState& edits, const OptimizationCourse& course) {
  QStringList lines;
  if (course.StartVolume() > 0) {
    lines += QStringLiteral("Volume: %1% of that at the last FEA")
                 .arg(100 * model.Volume / course.StartVolume(), 0, 'f', 1);
  }
  lines += QStringLiteral("Stress: mean %1, largest %2 MPa")
               .arg(model.AvgStress, 0, 'g', 4)
               .arg(model.MaxStress, 0, 'g', 4);
  lines += LayoutLine(model, course);
  if (const int solves = course.UnconvergedSolves(); solves > 0) {
    lines += QStringLiteral("The solver has not converged since %1:").arg(Since(model, solves - 1));
    lines += QStringLiteral("open the last saved model, lower the target.");
  }
  if (edits.changedSinceAnalysis) lines += QStringLiteral("Changed by hand since the last FEA.");
  if (StepCounterIsFull(model)) {
    lines += QStringLiteral("The step counter is full: FEA starts it anew.");
  }
  return lines.join(QLatin1Char('\n'));
}

}  // namespace quillane
