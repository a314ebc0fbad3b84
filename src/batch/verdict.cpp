#include "batch/verdict.h"

#include <fmt/format.h>

#include "batch/failure.h"
#include "batch/messages.h"
#include "fem/element_stiffness.h"
#include "fem/pieces.h"

namespace quillane {

void Judge(RunSummary& summary, const Model& model, const RunEnd& end) {
  const CourseFigures& figures = summary.figures;
  const auto note = [&summary](const std::string& text) { summary.notes.push_back(text); };
  if (figures.unconvergedSolves > 0) {
    note(fmt::format("the solver did not converge in {} of {} solves, first {}",
                     figures.unconvergedSolves, figures.solves,
                     figures.firstUnconverged == 0
                         ? "in the stress analysis"
                         : fmt::format("at step {}", figures.firstUnconverged)));
  }
  if (figures.solves > 0) {
    summary.pieces = static_cast<int>(FindPieces(model).pieces.size());
    if (summary.pieces > 1) {
      note(fmt::format("the plate has {} separate pieces", summary.pieces));
    }
    if (!summary.connected) note("a load is not connected to adequate supports");
  }
  if (end.signal != 0) note(fmt::format("interrupted after step {}", figures.steps));
  if (figures.solves > 0 && !figures.lastSolve.converged) {
    Complain(fmt::format(
        "the last solve did not converge: its displacements and stresses mean nothing; "
        "the plate {}",
        !summary.connected                   ? "is not held, or has come apart"
        : IsPoissonRatio(model.PoissonRatio) ? "is held, but too slender for the solver"
                                             : "is held, but Poisson's ratio is not between "
                                               "-1 and 0.5"));
  }
  summary.exitStatus = !end.filesWritten              ? kExitUsageOrFile
                       : end.signal != 0              ? kExitSignal + end.signal
                       : !figures.lastSolve.converged ? kExitNotConverged
                       : !end.wishReached             ? kExitWishNotReached
                                                      : kExitDone;
}

}  // namespace quillane
