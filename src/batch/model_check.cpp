#include "batch/model_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "fem/element_stiffness.h"
#include "fem/mesh.h"
#include "fem/pieces.h"
#include "model/number_text.h"
#include "model/regular_grid.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

constexpr int kShownOfAKind = 3;

class ModelCheck {
 public:
  ModelCheck(const Model& model, const ReadingNotes& notes) : model_(model), notes_(notes) {
    CheckNumbers();
    if (notes_.restLine > 0) {
      if (misnumbered_) {  // the other checks would only follow from it
        ReportShift();
        return;
      }
      Report(notes_.restLine, "the model ends before this line, nothing from here on is read");
    }
    for (const auto& [line, text] : notes_.rounded) {
      Report(line, "a whole number is expected, the nearest one is used", text);
    }
    CheckHead();
    CheckCells();
    if (CountsMatchGrid(model_)) {
      CheckNodes();
      const bool usable = CheckElements();
      if (usable) CheckSupportsAndLoads();
    } else {
      ReportCounts();
    }
    CheckParameters();
  }

  ModelFindings Findings() {
    int all = 0;
    for (const auto& [kind, count] : counts_) {
      all += count;
      if (count <= kShownOfAKind) continue;
      findings_.push_back(
          {lastLine_[kind], fmt::format("and {} more like this: {}", count - kShownOfAKind, kind)});
    }
    std::ranges::stable_sort(findings_, {}, &Finding::line);
    return {std::move(findings_), all};
  }

 private:
  /// Adds a finding. kind: words common to many; detail: of this one.
  void Report(int line, const std::string& kind, const std::string& detail = {}) {
    if (++counts_[kind] > kShownOfAKind) return;
    lastLine_[kind] = line;
    findings_.push_back({line, detail.empty() ? kind : detail + ": " + kind});
  }

  /// Adds a finding in the line of the k-th record of its group, from 1.
  void Report(Record record, int k, const std::string& kind, const std::string& detail = {}) {
    const auto& places = notes_.Places(record);
    const auto index = static_cast<std::size_t>(k) - 1;
    Report(index < places.size() ? places[index].line : 0, kind, detail);
  }

  void CheckHead() {
    const Model& m = model_;
    if (!(m.ElementSize > 0)) Report(Record::kView, 1, "the size of the cells is not above 0");
    if (!(m.DomainWidth > 0)) Report(Record::kView, 1, "the width that is shown is not above 0");
    const double size = double{m.ElementSize};
    const auto disagrees = [size](double from, double to, int count) {
      return std::fabs((to - from) / size - count) > 0.01;
    };
    if (size > 0 && (disagrees(double{m.DomainX1}, double{m.DomainX2}, m.CellColumnCount) ||
                     disagrees(double{m.DomainY1}, double{m.DomainY2}, m.CellRowCount))) {
      Report(
          Record::kLowerLeft, 1,
          fmt::format("the domain's corners do not match {} rows and {} columns of cells of {} mm",
                      m.CellRowCount, m.CellColumnCount, GeneralText(m.ElementSize)));
    }
    if (!(m.YoungModulus > 0)) Report(Record::kMaterial, 1, "Young's modulus is not above 0");
    if (!IsPoissonRatio(m.PoissonRatio)) {
      Report(Record::kMaterial, 1, "Poisson's ratio is not between -1 and 0.5");
    }
    if (!(m.Thickness > 0)) Report(Record::kMaterial, 1, "the thickness is not above 0");
  }

  void CheckCells() {
    bool anyMaterial = false;
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j) {
        const Integer state = model_.CellState(i, j);
        anyMaterial = anyMaterial || state > 0;
        if (IsCellState(state)) continue;
        Report(Record::kCell, ElementOfCell(model_, i, j), "the state is none of -3, 0, 1, 2",
               fmt::format("cell ({}, {}) has state {}", i, j, state));
      }
    }
    if (!anyMaterial) Report(Record::kCell, 1, "no cell holds material");
  }

  void ReportCounts() {
    const int rows = model_.CellRowCount, columns = model_.CellColumnCount;
    Report(Record::kMesh, 1,
           fmt::format("a grid of {} rows and {} columns has {} nodes and {} elements, not {} and "
                       "{}",
                       rows, columns, (rows + 1) * (columns + 1), rows * columns, model_.NodeCount,
                       model_.ElementCount));
  }

  /// Reports records whose number is not their place. The numbers are not used otherwise.
  void CheckNumbers() {
    const auto check = [this](Record record, const char* what) {
      int due = 0;
      for (const auto& [line, number] : notes_.Places(record)) {
        if (number == ++due) continue;
        misnumbered_ = true;
        Report(line,
               fmt::format("{} records are taken in their order, their numbers are ignored", what),
               fmt::format("number {} stands where {} is due", number, due));
      }
    };
    check(Record::kNode, "node");
    check(Record::kElement, "element");
    check(Record::kSupport, "support");
    check(Record::kLoad, "load");
  }

  /// Replaces the findings of CheckNumbers by one.
  void ReportShift() {
    const Finding first = findings_.front();
    findings_.clear();
    counts_.clear();
    Report(first.line,
           "a line before this one is missing or too many, and text follows the last "
           "record");
  }

  void CheckNodes() {
    const double left = double{model_.DomainX1}, lower = double{model_.DomainY1};
    for (const auto& [k, x, y] : MisplacedNodes(model_, left, lower)) {
      Report(Record::kNode, k, "the coordinates disagree with the grid",
             fmt::format("node {} at ({}, {}) instead of ({}, {})", k,
                         GeneralText(model_.NodeXY(k, 1)), GeneralText(model_.NodeXY(k, 2)),
                         GeneralText(x), GeneralText(y)));
    }
  }

  /// Returns false if an element names a node that does not exist.
  bool CheckElements() {
    bool usable = true;
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j) {
        const int element = ElementOfCell(model_, i, j);
        const std::string fault = ElementFault(element, NodesOfCell(model_, i, j));
        if (fault.empty()) continue;
        usable = usable && fault != kNoSuchNode;
        Report(Record::kElement, element, fault, fmt::format("element {}", element));
      }
    }
    return usable;
  }

  std::string ElementFault(int element, const std::array<int, 4>& due) const {
    const std::array<int, 4> nodes = NodesOfElement(model_, element);
    if (nodes == due) return "";
    for (const int node : nodes) {
      if (node < 1 || node > model_.NodeCount) return kNoSuchNode;
    }
    if (std::set<int>(nodes.begin(), nodes.end()).size() < 4) return "it names a node twice";
    double doubledArea = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const int from = nodes[k], to = nodes[(k + 1) % 4];
      doubledArea += model_.NodeXY(from, 1) * model_.NodeXY(to, 2) -
                     model_.NodeXY(to, 1) * model_.NodeXY(from, 2);
    }
    return doubledArea < 0 ? "its nodes run clockwise"
                           : "its nodes are not those of its cell, counter-clockwise from the "
                             "lower left";
  }

  void CheckSupportsAndLoads() {
    MarkActiveNodes(model_);
    bool anySupport = false, anyLoad = false, anyLoadMoves = false;
    for (int k = 1; k <= model_.NodeCount; ++k) {
      const bool active = model_.NodeActive(k) != 0;
      anySupport = anySupport || (active && IsHeld(model_, k));
      anyLoad = anyLoad || IsLoaded(model_, k);
      for (int d = 1; d <= 2; ++d) {
        const Integer code = model_.NodeFreedom(k, d);
        anyLoadMoves = anyLoadMoves || (active && code == 0 && model_.NodeLoad(k, d) != 0);
        if (code >= -1 && code <= 1) continue;
        Report(Record::kSupport, k, "a support is 0 or 1", fmt::format("node {} has {}", k, code));
      }
      if (active || !IsLoaded(model_, k)) continue;
      Report(Record::kLoad, k, "its load acts where no cell holds material",
             fmt::format("node {}", k));
    }
    if (!anyLoad) Report(Record::kLoad, 1, "no node has a load");
    if (anyLoad && !anyLoadMoves) {
      Report(Record::kLoad, 1,
             "no load moves the plate: each acts on a held node or on no material");
    }
    if (!anySupport) {
      Report(Record::kSupport, 1, "no node of the material is held");
      return;
    }
    for (const int node : LostLoads(model_)) {
      if (model_.NodeActive(node) == 0) continue;
      Report(Record::kLoad, node, "the load is not connected to adequate supports",
             fmt::format("node {}", node));
    }
    try {
      NumberComponents(model_);
    } catch (const RunTimeError& error) {
      Report(Record::kGrid, 1, error.what());
    }
  }

  void CheckParameters() {
    if (model_.StressTarget < 0) Report(Record::kParameters, 1, "the stress target is below 0");
    if (model_.Epsilon < 0 || model_.Epsilon > 10) {
      Report(Record::kParameters, 1, "Epsilon is not between 0 and 10, where the potentials are");
    }
    if (!(model_.Lambda > 0 && model_.Lambda <= 1)) {
      Report(Record::kParameters, 1, "Lambda is not above 0 and up to 1");
    }
  }

  static constexpr const char* kNoSuchNode = "it names a node that is not there";

  Model model_;
  const ReadingNotes& notes_;
  bool misnumbered_ = false;
  std::vector<Finding> findings_;
  std::map<std::string, int> counts_;
  std::map<std::string, int> lastLine_;
};

}  // namespace

ModelFindings CheckModel(const Model& model, const ReadingNotes& notes) {
  return ModelCheck(model, notes).Findings();
}

std::string FindingText(const Finding& finding) {
  return finding.line > 0 ? fmt::format("line {}: {}", finding.line, finding.reason)
                          : finding.reason;
}

std::string FindingsText(const ModelFindings& findings) {
  const std::string first = FindingText(findings.shown.front());
  return findings.count == 1 ? "looks wrong: " + first
                             : fmt::format("{} things look wrong (see --check), the first: {}",
                                           findings.count, first);
}

}  // namespace quillane
