#include "optimize/load_cases.h"

#include <algorithm>

#include "fem/analysis.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "fem/stress.h"
#include "model/number_text.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

std::string Place(const Model& model, int node) {
  return "(" + GeneralText(model.NodeXY(node, 1)) + ", " + GeneralText(model.NodeXY(node, 2)) + ")";
}

std::string Difference(const std::string& what, const std::string& actual,
                       const std::string& wanted) {
  return "not a load case of this model: " + what + " " + actual + ", not " + wanted;
}

/// Returns the first node or element of `other` that differs from that of `model`, in words; empty
/// if there is none. Both have the same number of nodes and of elements.
std::string MeshDifference(const Model& model, const Model& other) {
  for (int node = 1; node <= model.NodeCount; ++node) {
    const std::string actual = Place(other, node), wanted = Place(model, node);
    if (actual == wanted) continue;
    return Difference("node " + std::to_string(node) + " lies at", actual + " mm", wanted);
  }
  for (int element = 1; element <= model.ElementCount; ++element) {
    for (int k = 1; k <= 4; ++k) {
      if (other.ElementNodes(element, k) == model.ElementNodes(element, k)) continue;
      return Difference("element " + std::to_string(element) + " has node",
                        std::to_string(other.ElementNodes(element, k)),
                        std::to_string(model.ElementNodes(element, k)));
    }
  }
  return "";
}

SolveReport Worse(const SolveReport& one, const SolveReport& other) {
  return {.equations = std::max(one.equations, other.equations),
          .iterations = std::max(one.iterations, other.iterations),
          .relativeResidual = std::max(one.relativeResidual, other.relativeResidual),
          .trueResidual = std::max(one.trueResidual, other.trueResidual),
          .converged = one.converged && other.converged};
}

}  // namespace

std::string LoadCaseFault(const Model& model, const Model& other) {
  const auto grid = [](const Model& m) {
    return std::to_string(m.CellRowCount) + " x " + std::to_string(m.CellColumnCount);
  };
  const auto mesh = [](const Model& m) {
    return std::to_string(m.NodeCount) + " nodes and " + std::to_string(m.ElementCount);
  };
  const struct {
    const char* what;
    std::string actual, wanted;
    const char* unit;
  } values[] = {
      {"the grid has", grid(other), grid(model), " cells"},
      {"the mesh has", mesh(other), mesh(model), " elements"},
      {"a cell measures", GeneralText(other.ElementSize), GeneralText(model.ElementSize), " mm"},
      {"Young's modulus is", GeneralText(other.YoungModulus), GeneralText(model.YoungModulus),
       " MPa"},
      {"Poisson's ratio is", GeneralText(other.PoissonRatio), GeneralText(model.PoissonRatio), ""},
      {"the thickness is", GeneralText(other.Thickness), GeneralText(model.Thickness), " mm"},
  };
  for (const auto& [what, actual, wanted, unit] : values) {
    if (actual != wanted) return Difference(what, actual + unit, wanted);
  }
  return MeshDifference(model, other);
}

LoadCaseResult LoadCases::AnalyseOne(Model& model, std::size_t number) try {
  Model& own = number == 0 ? model : others_[number - 1];
  if (number > 0) {
    own.CellState = model.CellState;
    MarkActiveNodes(own);
  }
  const SolveReport solve = AnalyseStructure(own);
  return {.solve = solve,
          .stress = own.CellStress,
          .maxStress = own.MaxStress,
          .meanStress = own.AvgStress,
          .minStress = own.MinStress,
          .compliance = quillane::Compliance(own)};
} catch (const RunTimeError& error) {
  throw RunTimeError("load case " + std::to_string(number + 1), error);
}

SolveReport LoadCases::Analyse(Model& model) {
  if (others_.empty()) return AnalyseStructure(model);
  std::vector<LoadCaseResult> results(Count());
  RunSideBySide(Count(), threads_, [&](std::size_t k) { results[k] = AnalyseOne(model, k); });
  results_ = std::move(results);

  std::vector<const Array2<Double>*> fields;
  SolveReport worst = results_.front().solve;
  for (const LoadCaseResult& result : results_) {
    fields.push_back(&result.stress);
    worst = Worse(worst, result.solve);
  }
  EnvelopeStresses(model, fields);
  return worst;
}

double LoadCases::Compliance(const Model& model) const {
  if (others_.empty()) return quillane::Compliance(model);
  double sum = 0;
  for (const LoadCaseResult& result : results_) sum += result.compliance;
  return sum;
}

std::vector<std::vector<int>> LoadCases::LostLoads(const Model& model) const {
  std::vector<std::vector<int>> lost = {quillane::LostLoads(model)};
  for (const Model& other : others_) lost.push_back(quillane::LostLoads(model, other));
  return lost;
}

bool LoadCases::Connected(const Model& model) const {
  return std::ranges::all_of(LostLoads(model), [](const auto& nodes) { return nodes.empty(); });
}

}  // namespace quillane
