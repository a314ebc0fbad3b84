#include "batch/model_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

#include "batch/model_input.h"
#include "fem/load_paths.h"
#include "fem/mesh.h"
#include "model/model_file.h"
#include "model/number_text.h"
#include "model/run_time_error.h"

namespace quillane {
namespace {

constexpr int kShownOfAKind = 3;

struct Field {
  std::string_view text;
  int line;
};

/// The fields of a text as the reader takes them: a comma or the end of a line ends each.
std::vector<Field> FieldsOf(std::string_view text) {
  std::vector<Field> fields;
  int line = 1;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find_first_of(",\r\n"), text.size());
    fields.push_back({text.substr(0, length), line});
    const bool atEnd = length == text.size();
    if (!atEnd && text[length] != ',') ++line;
    text.remove_prefix(atEnd ? length : length + (text.substr(length).starts_with("\r\n") ? 2 : 1));
  }
  return fields;
}

/// Where the record groups of a model begin among its fields.
struct Places {
  explicit Places(const Model& model)
      : cells(15),
        nodes(cells + Size(model.CellRowCount) * Size(model.CellColumnCount)),
        elements(nodes + 3 * Size(model.NodeCount)),
        supports(elements + 5 * Size(model.ElementCount)),
        loads(supports + 3 * Size(model.NodeCount)),
        parameters(loads + 3 * Size(model.NodeCount)),
        end(parameters + 3) {}

  static std::size_t Size(int count) { return static_cast<std::size_t>(count); }
  /// Where record `number`, from 1, of a group begins.
  static std::size_t Record(std::size_t first, std::size_t width, int number) {
    return first + Size(number - 1) * width;
  }

  static constexpr std::size_t kView = 0, kGrid = 4, kCorners = 6, kMaterial = 10, kMesh = 13;
  std::size_t cells, nodes, elements, supports, loads, parameters, end;
};

class ModelCheck {
 public:
  explicit ModelCheck(const std::string& text)
      : model_(ModelFromText(text)), fields_(FieldsOf(text)), places_(model_) {
    CheckHead();
    CheckCells();
    if (CheckCounts()) {
      CheckNumbers();
      CheckNodes();
      const bool usable = CheckElements();
      if (usable) CheckSupportsAndLoads();
    }
    CheckParameters();
    CheckEnd();
  }

  std::vector<Finding> Findings() {
    for (const auto& [kind, count] : counts_) {
      if (count <= kShownOfAKind) continue;
      findings_.push_back(
          {lastLine_[kind], fmt::format("and {} more like this: {}", count - kShownOfAKind, kind)});
    }
    std::ranges::stable_sort(findings_, {}, &Finding::line);
    return std::move(findings_);
  }

 private:
  /// kind: what many findings have in common; detail: what this one adds.
  void Report(std::size_t field, const std::string& kind, const std::string& detail = {}) {
    const int line = field < fields_.size() ? fields_[field].line : 0;
    if (++counts_[kind] > kShownOfAKind) return;
    lastLine_[kind] = line;
    findings_.push_back({line, detail.empty() ? kind : detail + ": " + kind});
  }

  void CheckHead() {
    const Model& m = model_;
    if (!(m.ElementSize > 0)) Report(Places::kView + 1, "the size of the cells is not above 0");
    if (!(m.DomainWidth > 0)) Report(Places::kView, "the width that is shown is not above 0");
    const double size = double{m.ElementSize};
    const auto disagrees = [size](double from, double to, int count) {
      return std::fabs((to - from) / size - count) > 0.01;
    };
    if (size > 0 && (disagrees(double{m.DomainX1}, double{m.DomainX2}, m.CellColumnCount) ||
                     disagrees(double{m.DomainY1}, double{m.DomainY2}, m.CellRowCount))) {
      Report(
          Places::kCorners,
          fmt::format("the domain's corners do not hold {} rows and {} columns of cells of {} mm",
                      m.CellRowCount, m.CellColumnCount, GeneralText(m.ElementSize)));
    }
    if (!(m.YoungModulus > 0)) Report(Places::kMaterial, "Young's modulus is not above 0");
    if (!(m.PoissonRatio > -1 && m.PoissonRatio <= 0.5)) {
      Report(Places::kMaterial + 1, "Poisson's ratio is not between -1 and 0.5");
    }
    if (!(m.Thickness > 0)) Report(Places::kMaterial + 2, "the thickness is not above 0");
  }

  void CheckCells() {
    std::size_t field = places_.cells;
    bool anyMaterial = false;
    for (int i = 1; i <= model_.CellRowCount; ++i) {
      for (int j = 1; j <= model_.CellColumnCount; ++j, ++field) {
        const Integer state = model_.CellState(i, j);
        anyMaterial = anyMaterial || state > 0;
        const std::array known = {kCellCutOut, kCellEmpty, kCellDesign, kCellNonDesign};
        if (std::ranges::find(known, state) != known.end()) continue;
        Report(field, "the state is none of -3, 0, 1, 2",
               fmt::format("cell ({}, {}) has state {}", i, j, state));
      }
    }
    if (!anyMaterial) Report(places_.cells, "no cell holds material");
  }

  /// False where the mesh's counts are not the grid's, so that nothing of it can be compared.
  bool CheckCounts() {
    const int rows = model_.CellRowCount, columns = model_.CellColumnCount;
    const int nodes = (rows + 1) * (columns + 1), elements = rows * columns;
    if (model_.NodeCount == nodes && model_.ElementCount == elements) return true;
    Report(Places::kMesh,
           fmt::format("a grid of {} rows and {} columns has {} nodes and {} "
                       "elements, not {} and {}",
                       rows, columns, nodes, elements, model_.NodeCount, model_.ElementCount));
    return false;
  }

  /// The running numbers are read and dropped, so a record at another place is a wrong record.
  void CheckNumbers() {
    const auto check = [this](std::size_t first, std::size_t width, int count, const char* what) {
      for (int k = 1; k <= count; ++k) {
        const std::size_t field = Places::Record(first, width, k);
        Integer number = 0;
        ParseField(fields_[field].text, number);
        if (number == k) continue;
        Report(field, fmt::format("{} records count in their order, their numbers do not", what),
               fmt::format("number {} stands where {} is due", number, k));
      }
    };
    check(places_.nodes, 3, model_.NodeCount, "node");
    check(places_.elements, 5, model_.ElementCount, "element");
    check(places_.supports, 3, model_.NodeCount, "support");
    check(places_.loads, 3, model_.NodeCount, "load");
  }

  void CheckNodes() {
    const double size = double{model_.ElementSize};
    const int across = model_.CellColumnCount + 1;
    for (int k = 1; k <= model_.NodeCount; ++k) {
      const int row = (k - 1) / across, column = (k - 1) % across;
      const double x = double{model_.DomainX1} + column * size;
      const double y = double{model_.DomainY1} + row * size;
      const double off =
          std::max(std::fabs(model_.NodeXY(k, 1) - x), std::fabs(model_.NodeXY(k, 2) - y));
      if (off <= 0.01 * std::fabs(size)) continue;
      Report(Places::Record(places_.nodes, 3, k), "the coordinates disagree with the grid",
             fmt::format("node {} at ({}, {}) instead of ({}, {})", k,
                         GeneralText(model_.NodeXY(k, 1)), GeneralText(model_.NodeXY(k, 2)),
                         GeneralText(x), GeneralText(y)));
    }
  }

  /// False where an element names a node that is not there.
  bool CheckElements() {
    bool usable = true;
    for (int e = 1; e <= model_.ElementCount; ++e) {
      const std::string fault = ElementFault(e);
      if (fault.empty()) continue;
      usable = usable && fault != kNoSuchNode;
      Report(Places::Record(places_.elements, 5, e), fault, fmt::format("element {}", e));
    }
    return usable;
  }

  std::string ElementFault(int element) const {
    const int columns = model_.CellColumnCount;
    const int first = element + (element - 1) / columns;
    const std::array due = {first, first + 1, first + columns + 2, first + columns + 1};
    std::array<int, 4> nodes{};
    for (int k = 1; k <= 4; ++k)
      nodes[static_cast<std::size_t>(k - 1)] = model_.ElementNodes(element, k);
    if (nodes == due) return "";
    for (const int node : nodes) {
      if (node < 1 || node > model_.NodeCount) return kNoSuchNode;
    }
    if (std::set<int>(nodes.begin(), nodes.end()).size() < 4) return "a node stands there twice";
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
    bool anySupport = false, anyLoad = false;
    std::vector<bool> absent(static_cast<std::size_t>(model_.NodeCount) + 1);
    for (int k = 1; k <= model_.NodeCount; ++k) {
      const bool active = model_.NodeActive(k) != 0;
      const bool loaded = model_.NodeLoad(k, 1) != 0 || model_.NodeLoad(k, 2) != 0;
      const bool held = model_.NodeFreedom(k, 1) != 0 || model_.NodeFreedom(k, 2) != 0;
      anySupport = anySupport || (held && active);
      anyLoad = anyLoad || loaded;
      if (!loaded || active) continue;
      absent[static_cast<std::size_t>(k)] = true;
      Report(Places::Record(places_.loads, 3, k), "its load acts where no cell holds material",
             fmt::format("node {}", k));
    }
    if (!anyLoad) Report(places_.loads, "no node has a load");
    if (!anySupport) {
      Report(places_.supports, "no node of the material is held");
      return;
    }
    for (const int node : LostLoads(model_)) {
      if (absent[static_cast<std::size_t>(node)]) continue;
      Report(Places::Record(places_.loads, 3, node),
             "the plate under this load is not held: it can move or turn, or hangs on a corner",
             fmt::format("node {}", node));
    }
    try {
      NumberComponents(model_);
    } catch (const RunTimeError& error) {
      Report(Places::kGrid, error.what());
    }
  }

  void CheckParameters() {
    if (model_.StressTarget < 0) Report(places_.parameters, "the stress target is below 0");
    if (model_.Epsilon < 0 || model_.Epsilon > 10) {
      Report(places_.parameters + 1, "Epsilon is not between 0 and 10, where the potentials are");
    }
    if (!(model_.Lambda > 0 && model_.Lambda <= 1)) {
      Report(places_.parameters + 2, "Lambda is not above 0 and up to 1");
    }
  }

  void CheckEnd() {
    for (std::size_t field = places_.end; field < fields_.size(); ++field) {
      const std::string_view text = fields_[field].text;
      if (text.find_first_not_of(" \t") == std::string_view::npos) continue;
      Report(field, "the model ends before this line, nothing here is read");
      return;
    }
  }

  static constexpr const char* kNoSuchNode = "it names a node that is not there";

  Model model_;
  std::vector<Field> fields_;
  Places places_;
  std::vector<Finding> findings_;
  std::map<std::string, int> counts_;
  std::map<std::string, int> lastLine_;
};

}  // namespace

std::vector<Finding> CheckModelText(const std::string& text) {
  try {
    return ModelCheck(text).Findings();
  } catch (const ModelFileError& error) {
    return {{0, error.what()}};
  }
}

}  // namespace quillane
