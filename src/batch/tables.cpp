#include "batch/tables.h"

#include <fmt/format.h>

#include <cstdio>
#include <iterator>
#include <map>
#include <sstream>
#include <utility>
#include <vector>

#include "fem/stress.h"
#include "model/model_file.h"
#include "model/number_text.h"

namespace quillane {
namespace {

/// Reads a table of cells; its errors name the line.
class CellReader {
 public:
  explicit CellReader(const std::string& text) : text_(text) {
    if (text.starts_with("\xEF\xBB\xBF")) text_.ignore(3);  // a byte order mark
    NextLine();
    for (std::size_t at = 0; at < fields_.size(); ++at) columns_.emplace(fields_[at], at);
    for (const char* name : {"row", "column", "state", "potential", "step"}) {
      if (columns_.contains(name)) continue;
      Fail(fmt::format("this is no table of --cells: it has no column {}", name));
    }
  }

  void ReadInto(Model& model) {
    for (int i = 1; i <= model.CellRowCount; ++i) {
      for (int j = 1; j <= model.CellColumnCount; ++j) ReadCell(model, i, j);
    }
    if (text_.peek() == EOF) return;
    ++line_;
    Fail("the table goes on after the last cell of the model's grid");
  }

 private:
  [[noreturn]] void Fail(const std::string& reason) const { throw ModelFileError(line_, reason); }

  /// Reads the fields of the next line.
  void NextLine() {
    ++line_;
    std::string line;
    if (!std::getline(text_, line)) {
      Fail("the table ends before the last cell of the model's grid");
    }
    if (line.ends_with('\r')) line.pop_back();
    fields_ = {""};
    for (const char character : line) {
      if (character == ',') {
        fields_.emplace_back();
      } else {
        fields_.back() += character;
      }
    }
  }

  void ReadCell(Model& model, int row, int column) {
    NextLine();
    if (Value<Integer>("row") != row || Value<Integer>("column") != column) {
      Fail(fmt::format("cell ({}, {}) of the model's grid is expected here", row, column));
    }
    const auto state = Value<Integer>("state");
    if (!IsCellState(state)) Fail(fmt::format("{} is no state of a cell", state));
    if ((state == kCellCutOut) != (model.CellState(row, column) == kCellCutOut)) {
      Fail("the cell is cut out in the table or in the model, but not in both");
    }
    const auto step = Value<Integer>("step");
    if (step < 0) Fail("the step is below 0");
    if (line_ > 2 && step != model.StepCount) Fail("the cells are not all of one step");
    model.CellState(row, column) = state;
    model.Potential(row, column) = Value<Double>("potential");
    model.StepCount = step;
  }

  template <class T>
  T Value(const char* name) const {
    const std::size_t at = columns_.find(name)->second;
    if (at >= fields_.size()) Fail(fmt::format("the field of column {} is missing", name));
    T value{};
    if (ParseField(fields_[at], value) != FieldFault::kNone) {
      Fail(fmt::format("the {} is not valid: \"{}\"", name, fields_[at]));
    }
    return value;
  }

  std::istringstream text_;
  int line_ = 0;
  std::vector<std::string> fields_;  ///< of the present line
  std::map<std::string, std::size_t> columns_;
};

}  // namespace

std::string CellTable(const Model& model, std::span<const LoadCaseResult> cases) {
  std::string text = "row,column,state,stress,potential,sigma_x,sigma_y,tau_xy,step";
  for (std::size_t k = 1; k <= cases.size(); ++k) text += fmt::format(",stress_{}", k);
  text += '\n';
  const auto stresses = ComponentStresses(model);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) {
      const auto [x, y, xy] = stresses[static_cast<std::size_t>(ElementOfCell(model, i, j))];
      fmt::format_to(std::back_inserter(text),
                     "{},{},{},{:.17g},{:.17g},{:.17g},{:.17g},{:.17g},{}", i, j,
                     model.CellState(i, j), model.CellStress(i, j), model.Potential(i, j), x, y, xy,
                     model.StepCount);
      for (const LoadCaseResult& result : cases) {
        fmt::format_to(std::back_inserter(text), ",{:.17g}", result.stress(i, j));
      }
      text += '\n';
    }
  }
  return text;
}

void ResumeFrom(Model& model, const std::string& cellTable) {
  Model resumed = model;
  CellReader(cellTable).ReadInto(resumed);
  model = std::move(resumed);
}

std::string NodeTable(const Model& model) {
  std::string text = "node,x,y,u,v\n";
  for (int k = 1; k <= model.NodeCount; ++k) {
    fmt::format_to(std::back_inserter(text), "{},{:.17g},{:.17g},{:.17g},{:.17g}\n", k,
                   model.NodeXY(k, 1), model.NodeXY(k, 2), model.NodeDisp(k, 1),
                   model.NodeDisp(k, 2));
  }
  return text;
}

}  // namespace quillane
