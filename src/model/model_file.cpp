#include "model/model_file.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <ios>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "model/number_text.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

constexpr std::size_t kLongestField = 2048;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Makes the text of records: the values separated by commas, ended by CR LF.
class RecordWriter {
 public:
  template <class... Values>
  void Plain(Record /*record*/, const Values&... values) {
    bool first = true;
    ((text_ += (first ? "" : ","), text_ += GeneralText(values), first = false), ...);
    text_ += "\r\n";
  }

  template <class... Values>
  void Numbered(Record record, int number, const Values&... values) {
    Plain(record, number, values...);
  }

  std::string Text() && { return std::move(text_); }

 private:
  std::string text_;
};

/// Hands out the records of a file one after another; commas and line ends both separate fields.
class RecordReader {
 public:
  /// beforeChange may be empty; it is called before the first value is handed out.
  RecordReader(std::streambuf& input, std::function<void()> beforeChange)
      : input_(input), beforeChange_(std::move(beforeChange)) {}

  const ReadingNotes& Notes() const { return notes_; }

  template <class... Values>
  void Plain(Record record, Values&... values) {
    record_ = record;
    auto& places = notes_.places[static_cast<std::size_t>(record)];
    places.push_back({nextLine_, static_cast<int>(places.size()) + 1});
    (ReadField(values), ...);
  }

  /// Notes the running number; `due` is the one that belongs there.
  template <class... Values>
  void Numbered(Record record, int due, Values&... values) {
    Integer number = 0;
    Plain(record, number, values...);
    auto& place = notes_.places[static_cast<std::size_t>(record)].back();
    place.number = number;
    if (!misplaced_ && number != due) misplaced_ = {place, due};
  }

  /// Notes where text follows the last record.
  void FindRest() {
    for (int c = input_.sbumpc(); c != kEnd; c = input_.sbumpc()) {
      if (c == '\n' || (c == '\r' && input_.sgetc() != '\n')) ++nextLine_;
      if (std::strchr(" \t,\r\n", c) != nullptr && c != 0) continue;
      notes_.restLine = nextLine_;
      return;
    }
  }

  /// Throws ModelFileError in the present line. Where running numbers did not fit, tells the first:
  /// a line too few or too many shows itself there.
  [[noreturn]] void Fail(const std::string& reason) const {
    if (!misplaced_) throw ModelFileError(line_, reason);
    const auto& [place, due] = *misplaced_;
    throw ModelFileError(line_, reason + "; already in line " + std::to_string(place.line) +
                                    " number " + std::to_string(place.number) + " stands where " +
                                    std::to_string(due) +
                                    " is due: is a line before it missing or too many?");
  }

 private:
  static constexpr int kEnd = std::char_traits<char>::eof();

  template <class T>
  void ReadField(T& value) {
    NextField();
    T read{};
    switch (ParseField(field_, read)) {
      case FieldFault::kNone:
        break;
      case FieldFault::kRounded:
        notes_.rounded.push_back({line_, Shown()});
        break;
      case FieldFault::kEmpty:
        Fail(What() + " is missing");
      case FieldFault::kNotANumber:
        Fail(What() + " is not a number: \"" + Shown() + "\"");
      case FieldFault::kOutOfRange:
        Fail(What() + " is out of range: \"" + Shown() + "\"");
    }
    if (beforeChange_) std::exchange(beforeChange_, nullptr)();
    value = read;
  }

  /// The present record, as a message names it.
  std::string What() const {
    constexpr std::array kNames = {
        "the drawing-area setting", "the grid size",      "the first domain corner",
        "the second domain corner", "the material value", "the mesh size",
        "the cell state",           "the node's record",  "the element's record",
        "the support's record",     "the load's record",  "the optimization parameter"};
    static_assert(kNames.size() == kRecordKinds);
    return kNames[static_cast<std::size_t>(record_)];
  }

  /// Fetches the next field and the line it stands in.
  void NextField() {
    const bool isFirst = nextLine_ == 1 && line_ == 0;
    field_.clear();
    line_ = nextLine_;
    int c = input_.sbumpc();
    if (c == kEnd) Fail("the file ends where " + What() + " should stand");
    for (; c != kEnd && c != ',' && c != '\n' && c != '\r'; c = input_.sbumpc()) {
      if (field_.size() == kLongestField) Fail(What() + " is a field without end");
      field_ += static_cast<char>(c);
    }
    if (c == '\r' && input_.sgetc() == '\n') input_.sbumpc();
    if (c == '\r' || c == '\n') ++nextLine_;
    if (isFirst && field_.starts_with(kByteOrderMark)) field_.erase(0, kByteOrderMark.size());
  }

  /// Returns the beginning of the field for a message, anything but printable ASCII as "?".
  std::string Shown() const {
    std::string shown = field_.substr(0, 40);
    for (char& c : shown) {
      if (c < ' ' || c > '~') c = '?';
    }
    return shown + (field_.size() > 40 ? "..." : "");
  }

  std::streambuf& input_;
  std::function<void()> beforeChange_;
  ReadingNotes notes_;
  Record record_ = Record::kView;
  std::string field_;
  int line_ = 0;
  int nextLine_ = 1;
  std::optional<std::pair<ReadingNotes::Place, int>> misplaced_;  ///< and the number due there
};

/// Reads or writes the records before the cells: the view, the sizes and the material.
template <class Records, class AnyModel>
void TransferHead(Records& records, AnyModel& m) {
  records.Plain(Record::kView, m.DomainWidth, m.ElementSize, m.OriginFracX, m.OriginFracY);
  records.Plain(Record::kGrid, m.CellRowCount, m.CellColumnCount);
  records.Plain(Record::kLowerLeft, m.DomainX1, m.DomainY1);
  records.Plain(Record::kUpperRight, m.DomainX2, m.DomainY2);
  records.Plain(Record::kMaterial, m.YoungModulus, m.PoissonRatio, m.Thickness);
  records.Plain(Record::kMesh, m.NodeCount, m.ElementCount);
}

/// Likewise the cells and all after them.
template <class Records, class AnyModel>
void TransferRest(Records& records, AnyModel& m) {
  for (int i = 1; i <= m.CellRowCount; ++i) {
    for (int j = 1; j <= m.CellColumnCount; ++j) records.Plain(Record::kCell, m.CellState(i, j));
  }
  for (int k = 1; k <= m.NodeCount; ++k) {
    records.Numbered(Record::kNode, k, m.NodeXY(k, 1), m.NodeXY(k, 2));
  }
  for (int e = 1; e <= m.ElementCount; ++e) {
    records.Numbered(Record::kElement, e, m.ElementNodes(e, 1), m.ElementNodes(e, 2),
                     m.ElementNodes(e, 3), m.ElementNodes(e, 4));
  }
  for (int k = 1; k <= m.NodeCount; ++k) {
    records.Numbered(Record::kSupport, k, m.NodeFreedom(k, 1), m.NodeFreedom(k, 2));
  }
  for (int k = 1; k <= m.NodeCount; ++k) {
    records.Numbered(Record::kLoad, k, m.NodeLoad(k, 1), m.NodeLoad(k, 2));
  }
  records.Plain(Record::kParameters, m.StressTarget, m.Epsilon, m.Lambda);
}

void SizeArrays(const RecordReader& in, Model& model) {
  const int cells = int{model.CellRowCount} * model.CellColumnCount;
  const int gridLine = in.Notes().Places(Record::kGrid).front().line;
  if (model.CellRowCount < 1 || model.CellColumnCount < 1) {
    throw ModelFileError(gridLine, "a grid of " + std::to_string(model.CellRowCount) +
                                       " rows and " + std::to_string(model.CellColumnCount) +
                                       " columns has no cells");
  }
  if (cells > kIntegerMax) {
    throw ModelFileError(gridLine, "the grid has " + std::to_string(cells) + " cells, more than " +
                                       std::to_string(kIntegerMax));
  }
  try {
    ReDimGridArrays(model);
  } catch (const RunTimeError& error) {
    in.Fail(error.what());
  }
}

/// Throws RunTimeError for counts that no file can hold; a failed opening can leave them. Without a
/// domain all are 0.
void CheckCounts(const Model& model) {
  const auto [least, most] =
      std::minmax({model.CellRowCount, model.CellColumnCount, model.NodeCount, model.ElementCount});
  if (least == 0 && most == 0) return;
  if (model.CellRowCount < 1 || model.CellColumnCount < 1 || least < 0) {
    throw RunTimeError(ErrorKind::kSubscript,
                       "the grid's " + GeneralText(int{model.CellRowCount}) + " rows and " +
                           GeneralText(int{model.CellColumnCount}) + " columns, " +
                           GeneralText(int{model.NodeCount}) + " nodes and " +
                           GeneralText(int{model.ElementCount}) + " elements are no mesh");
  }
}

}  // namespace

ModelFileError::ModelFileError(int line, const std::string& reason)
    : std::runtime_error(line > 0 ? "line " + std::to_string(line) + ": " + reason : reason),
      line_(line) {}

std::string ModelFileText(const Model& model) {
  CheckCounts(model);
  RecordWriter out;
  TransferHead(out, model);
  TransferRest(out, model);
  return std::move(out).Text();
}

void SaveModelFile(Model& model, const std::filesystem::path& path) {
  try {
    ReplaceFile(path, ModelFileText(model));
  } catch (const FileWriteError& error) {
    throw ModelFileError(0, error.what());
  } catch (const RunTimeError& error) {
    throw ModelFileError(0, error.what());
  }
  model.ModelFilePath = path.string();
}

ReadingNotes ReadModel(Model& model, std::streambuf& input,
                       const std::function<void()>& beforeChange) {
  RecordReader in(input, beforeChange);
  try {
    TransferHead(in, model);
    SizeArrays(in, model);
    TransferRest(in, model);
    in.FindRest();
    return in.Notes();
  } catch (const std::ios_base::failure& failure) {
    in.Fail("the file cannot be read: " + failure.code().message());
  }
}

void OpenModelFile(Model& model, const std::filesystem::path& path,
                   const std::function<void()>& beforeChange) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) throw ModelFileError(0, "no such file");
  if (!std::filesystem::is_regular_file(status)) {
    throw ModelFileError(0, "the path does not name an ordinary file");
  }
  std::filebuf file;
  if (file.open(path, std::ios::in | std::ios::binary) == nullptr) {
    throw ModelFileError(0, "the file cannot be opened for reading");
  }
  model.ModelFilePath = path.string();
  ReadModel(model, file, beforeChange);
}

}  // namespace quillane
