#include "batch/run_summary.h"

#include <fmt/format.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUtf8StringView>
#include <iterator>

#include "batch/console.h"
#include "batch/failure.h"
#include "batch/messages.h"
#include "batch/search_run.h"
#include "fem/element_stiffness.h"
#include "fem/pieces.h"
#include "model/number_text.h"

namespace quillane {
namespace {

/// Returns a Single as written: 0.05, not 0.0500000007.
double Plain(Single value) { return QString::fromStdString(GeneralText(value)).toDouble(); }

QJsonArray StageArray(const RunSummary& summary) {
  QJsonArray stages;
  for (const auto& [stage, volume, compliance] : summary.stages) {
    stages.append(QJsonObject{{"stressTarget", Plain(stage.stressTarget)},
                              {"epsilon", stage.epsilon},
                              {"lambda", Plain(stage.lambda)},
                              {"steps", stage.steps},
                              {"volume", volume},
                              {"compliance", compliance}});
  }
  return stages;
}

QString Text(const std::string& text) { return QString::fromStdString(Printable(text)); }

/// Adds the name of a model's file. One that is not UTF-8 is percent-encoded, which a further
/// member says.
void AddModelName(QJsonObject& object, const std::string& name) {
  const bool isUtf8 = QUtf8StringView(name).isValidUtf8();
  object["model"] =
      isUtf8 ? QString::fromStdString(name)
             : QString::fromLatin1(QByteArray::fromStdString(name).toPercentEncoding("/ "));
  if (!isUtf8) object["modelEncoding"] = "percent";
}

QJsonArray CircleArray(const std::vector<Circle>& circles) {
  QJsonArray array;
  for (const auto& [centre, radius] : circles) {
    array.append(QJsonObject{{"x", centre.x}, {"y", centre.y}, {"radius", radius}});
  }
  return array;
}

QJsonObject OutlineObject(const OutlineFigures& figures) {
  QJsonObject object{
      {"pieces", figures.pieces},           {"holes", figures.holes},
      {"cornerContacts", figures.contacts}, {"shortestSegment", figures.shortestSegment},
      {"areaChange", figures.areaChange},   {"circles", CircleArray(figures.circles)},
      {"arcs", CircleArray(figures.arcs)}};
  if (const auto& neck = figures.neck) {
    object["narrowestNeck"] =
        QJsonObject{{"width", neck->width}, {"x", neck->middle.x}, {"y", neck->middle.y}};
  }
  return object;
}

QJsonArray CaseArray(const RunSummary& summary) {
  QJsonArray cases;
  for (std::size_t k = 0; k < summary.cases.size(); ++k) {
    const LoadCaseResult& result = summary.cases[k];
    QJsonObject object{
        {"compliance", result.compliance},       {"maxStress", result.maxStress},
        {"meanStress", result.meanStress},       {"minStress", result.minStress},
        {"iterations", result.solve.iterations}, {"trueResidual", result.solve.trueResidual},
        {"converged", result.solve.converged},   {"connected", summary.lost[k].empty()}};
    AddModelName(object, summary.files[k]);
    cases.append(object);
  }
  return cases;
}

/// Returns one line per load case; empty if there is only one.
std::string CaseTable(const RunSummary& summary) {
  if (summary.cases.empty()) return "";
  std::string text = "\nload case  compliance  mean (MPa)  max (MPa)  file\n";
  for (std::size_t k = 0; k < summary.cases.size(); ++k) {
    const LoadCaseResult& result = summary.cases[k];
    fmt::format_to(std::back_inserter(text), "{:>9}  {:>10.5g}  {:>10.4g}  {:>9.4g}  {}\n", k + 1,
                   result.compliance, result.meanStress, result.maxStress,
                   Printable(summary.files[k]));
  }
  return text;
}

QJsonArray AttemptArray(const SearchResult& search) {
  QJsonArray attempts;
  for (const Attempt& attempt : search.attempts) {
    attempts.append(QJsonObject{{"lambda", Plain(attempt.way.lambda)},
                                {"epsilon", attempt.way.epsilon},
                                {"otherEpsilons", !attempt.way.narrowed},
                                {"votes", attempt.way.votes},
                                {"pace", attempt.way.pace},
                                {"stages", static_cast<int>(attempt.stages.size())},
                                {"stepsTried", attempt.steps},
                                {"volume", attempt.volume},
                                {"compliance", attempt.compliance},
                                {"meanStress", attempt.meanStress},
                                {"maxStress", attempt.maxStress},
                                {"largestLoss", attempt.worstLoss - 1},
                                {"reached", attempt.reached},
                                {"end", WhyEnded(attempt.end)},
                                {"chosen", &attempt == &search.Best()}});
  }
  return attempts;
}

/// Returns the volume as a share of that at the start.
double VolumeFraction(const Model& model, const RunSummary& summary) {
  return summary.startVolume > 0 ? model.Volume / summary.startVolume : 0;
}

}  // namespace

void Judge(RunSummary& summary, const Model& model, bool filesWritten) {
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
  const int signal = NotedSignal();
  if (signal != 0) note(fmt::format("interrupted after step {}", figures.steps));
  if (figures.solves > 0 && !figures.lastSolve.converged) {
    Complain(fmt::format(
        "the last solve did not converge: its displacements and stresses mean nothing; "
        "the plate {}",
        !summary.connected                   ? "is not held, or has come apart"
        : IsPoissonRatio(model.PoissonRatio) ? "is held, but too slender for the solver"
                                             : "is held, but Poisson's ratio is not between "
                                               "-1 and 0.5"));
  }
  summary.exitStatus = !filesWritten                  ? kExitUsageOrFile
                       : signal != 0                  ? kExitSignal + signal
                       : !figures.lastSolve.converged ? kExitNotConverged
                       : !summary.wishReached         ? kExitWishNotReached
                                                      : kExitDone;
}

std::string SummaryText(const Model& model, const RunSummary& summary) {
  std::string text;
  const auto line = [&text](const char* name, const std::string& value) {
    fmt::format_to(std::back_inserter(text), "{:<14} {}\n", name, value);
  };
  line("steps", std::to_string(summary.figures.steps));
  line("stress target", GeneralText(model.StressTarget) + " MPa");
  line("Epsilon", GeneralText(int{model.Epsilon}));
  line("Lambda", GeneralText(model.Lambda));
  line("equations", std::to_string(summary.figures.lastSolve.equations));
  line("iterations", std::to_string(summary.figures.lastSolve.iterations));
  line("residual", ExponentText(summary.figures.lastSolve.relativeResidual));
  line("true residual", ExponentText(summary.figures.lastSolve.trueResidual));
  line("volume", GeneralText(model.Volume) + " mm^3");
  line("fraction",
       fmt::format("{:.4f} of the volume at the start", VolumeFraction(model, summary)));
  line("compliance", GeneralText(summary.compliance) + " N mm");
  line("max stress", GeneralText(model.MaxStress) + " MPa");
  line("mean stress", GeneralText(model.AvgStress) + " MPa");
  line("min stress", GeneralText(model.MinStress) + " MPa");
  text += CaseTable(summary);
  if (!summary.stages.empty()) {
    text += "\nstage  target (MPa)  Epsilon  Lambda  steps  fraction  compliance\n";
  }
  int number = 0;
  for (const auto& [stage, volume, compliance] : summary.stages) {
    fmt::format_to(std::back_inserter(text),
                   "{:>5}  {:>12}  {:>7}  {:>6}  {:>5}  {:>8.4f}  {:>10.5g}\n", ++number,
                   GeneralText(stage.stressTarget), stage.epsilon, GeneralText(stage.lambda),
                   stage.steps, volume / summary.startVolume, compliance);
  }
  if (summary.search) text += AttemptTable(*summary.search, summary.startVolume);
  for (const std::string& note : summary.notes) text += note + "\n";
  return text;
}

std::string SummaryJson(const Model& model, const RunSummary& summary) {
  QJsonObject object{
      {"version", QUILLANE_VERSION},
      {"exitStatus", summary.exitStatus},
      {"steps", summary.figures.steps},
      {"stressTarget", Plain(model.StressTarget)},
      {"epsilon", model.Epsilon},
      {"lambda", Plain(model.Lambda)},
      {"rows", model.CellRowCount},
      {"columns", model.CellColumnCount},
      {"elementSize", Plain(model.ElementSize)},
      {"youngModulus", model.YoungModulus},
      {"poissonRatio", model.PoissonRatio},
      {"thickness", model.Thickness},
      {"equations", summary.figures.lastSolve.equations},
      {"iterations", summary.figures.lastSolve.iterations},
      {"residual", summary.figures.lastSolve.relativeResidual},
      {"trueResidual", summary.figures.lastSolve.trueResidual},
      {"converged", summary.figures.lastSolve.converged},
      {"solves", summary.figures.solves},
      {"unconvergedSolves", summary.figures.unconvergedSolves},
      {"connected", summary.connected},
      {"startVolume", summary.startVolume},
      {"volume", model.Volume},
      {"volumeFraction", VolumeFraction(model, summary)},
      {"pieces", summary.pieces},
      {"compliance", summary.compliance},
      {"maxStress", model.MaxStress},
      {"meanStress", model.AvgStress},
      {"minStress", model.MinStress},
  };
  AddModelName(object, summary.files.front());
  if (summary.figures.unconvergedSolves > 0)
    object["firstUnconvergedStep"] = summary.figures.firstUnconverged;
  if (summary.rest) {
    object["steadyFromStep"] = summary.figures.steps - summary.rest->steps;
    object["cycle"] = summary.rest->cycle;
  }
  if (!summary.stages.empty()) object["stages"] = StageArray(summary);
  if (!summary.cases.empty()) object["loadCases"] = CaseArray(summary);
  if (summary.search) object["attempts"] = AttemptArray(*summary.search);
  if (!summary.error.empty()) object["error"] = Text(summary.error);
  if (summary.outline) object["outline"] = OutlineObject(*summary.outline);
  QJsonArray notes;
  for (const std::string& remark : summary.remarks) notes.append(Text(remark));
  for (const std::string& note : summary.notes) notes.append(Text(note));
  object["notes"] = notes;
  return QJsonDocument(object).toJson().toStdString();
}

}  // namespace quillane
