#include "batch/resume.h"

#include <fmt/format.h>

#include <map>
#include <string_view>
#include <vector>

#include "model/model_file.h"
#include "model/number_text.h"

namespace quillane {
namespace {

/// Removes the next line from a text and returns it without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::vector<std::string_view> FieldsOf(std::string_view line) {
  std::vector<std::string_view> fields;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = line.find(',');
    fields.push_back(line.substr(0, end));
    line.remove_prefix(end == std::string_view::npos ? 0 : end + 1);
  }
  return fields;
}

class TableReader {
 public:
  explicit TableReader(std::string_view text) : text_(text) {
    if (text_.starts_with("\xEF\xBB\xBF")) text_.remove_prefix(3);  // a byte order mark
    const std::vector<std::string_view> names = FieldsOf(NextLine());
    for (std::size_t at = 0; at < names.size(); ++at) columns_.emplace(names[at], at);
    for (const char* name : {"row", "column", "state", "potential", "step"}) {
      if (!columns_.contains(name)) {
        throw ModelFileError(1,
                             fmt::format("this is no table of --cells: it has no column {}", name));
      }
    }
  }

  void ReadInto(Model& model) {
    for (int i = 1; i <= model.CellRowCount; ++i) {
      for (int j = 1; j <= model.CellColumnCount; ++j) ReadCell(model, i, j);
    }
    if (!text_.empty()) {
      NextLine();
      Fail("the table goes on after the last cell of the model's grid");
    }
  }

 private:
  std::string_view NextLine() {
    ++line_;
    if (text_.empty()) Fail("the table ends before the last cell of the model's grid");
    return TakeLine(text_);
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw ModelFileError(line_, reason); }

  void ReadCell(Model& model, int row, int column) {
    fields_ = FieldsOf(NextLine());
    if (Value<Integer>("row") != row || Value<Integer>("column") != column) {
      Fail(fmt::format("cell ({}, {}) of the model's grid is expected here", row, column));
    }
    const auto state = Value<Integer>("state");
    const bool known = state == kCellCutOut || (state >= kCellEmpty && state <= kCellNonDesign);
    if (!known) Fail(fmt::format("{} is no state of a cell", state));
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

  std::string_view text_;
  int line_ = 0;
  std::map<std::string_view, std::size_t> columns_;
  std::vector<std::string_view> fields_;
};

}  // namespace

void ResumeFrom(Model& model, const std::string& cellTable) {
  Model resumed = model;
  TableReader(cellTable).ReadInto(resumed);
  model = std::move(resumed);
}

}  // namespace quillane
