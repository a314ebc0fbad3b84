#include "model/model_file.h"

#include <algorithm>
#include <fstream>
#include <ios>

#include "model/number_text.h"
#include "model/run_time_error.h"
#include "model/safe_file.h"

namespace quillane {
namespace {

constexpr std::size_t kLongestField = 2048;

/// Appends one record: the values as text, separated by commas, ended by CR LF.
template <class... Values>
void WriteRecord(std::string& text, const Values&... values) {
  bool first = true;
  ((text += (first ? "" : ","), text += GeneralText(values), first = false), ...);
  text += "\r\n";
}

/// Hands out the fields of a file one after another; commas and line ends both separate.
class FieldReader {
 public:
  explicit FieldReader(std::streambuf& input) : input_(input) {}

  int Line() const { return line_; }

  template <class... Values>
  void ReadRecord(const char* what, Values&... values) {
    (Read(what, values), ...);
  }

  template <class T>
  void Read(const char* what, T& value) {
    NextField(what);
    switch (ParseField(field_, value)) {
      case FieldFault::kNone:
        return;
      case FieldFault::kEmpty:
        Fail(std::string(what) + " is missing");
      case FieldFault::kNotANumber:
        Fail(std::string(what) + " is not a number: \"" + Shown() + "\"");
      case FieldFault::kOutOfRange:
        Fail(std::string(what) + " is out of range: \"" + Shown() + "\"");
    }
  }

  [[noreturn]] void Fail(const std::string& reason) const { throw ModelFileError(line_, reason); }

 private:
  static constexpr int kEnd = std::char_traits<char>::eof();

  /// Fetches the next field and the line it stands in.
  void NextField(const char* what) {
    field_.clear();
    line_ = nextLine_;
    int c = input_.sbumpc();
    if (c == kEnd) Fail(std::string("the file ends where ") + what + " should stand");
    for (; c != kEnd && c != ',' && c != '\n' && c != '\r'; c = input_.sbumpc()) {
      if (field_.size() == kLongestField) Fail(std::string(what) + " is a field without end");
      field_ += static_cast<char>(c);
    }
    if (c == '\r' && input_.sgetc() == '\n') input_.sbumpc();
    if (c == '\r' || c == '\n') ++nextLine_;
  }

  /// The field as a message can show it: its beginning, other than printable ASCII as "?".
  std::string Shown() const {
    std::string shown = field_.substr(0, 40);
    for (char& c : shown) {
      if (c < ' ' || c > '~') c = '?';
    }
    return shown + (field_.size() > 40 ? "..." : "");
  }

  std::streambuf& input_;
  std::string field_;
  int line_ = 1;
  int nextLine_ = 1;
};

/// Records 1 to 6: the view, the sizes and the material. Returns the line of the grid's size.
int ReadHead(FieldReader& in, Model& model, const std::function<void()>& beforeChange) {
  Single width = 0;
  in.Read("the drawing-area setting", width);
  if (beforeChange) beforeChange();
  model.DomainWidth = width;
  in.ReadRecord("the drawing-area setting", model.ElementSize, model.OriginFracX,
                model.OriginFracY);
  in.ReadRecord("the grid size", model.CellRowCount, model.CellColumnCount);
  const int gridLine = in.Line();
  in.ReadRecord("the first domain corner", model.DomainX1, model.DomainY1);
  in.ReadRecord("the second domain corner", model.DomainX2, model.DomainY2);
  in.ReadRecord("the material value", model.YoungModulus, model.PoissonRatio, model.Thickness);
  in.ReadRecord("the mesh size", model.NodeCount, model.ElementCount);
  return gridLine;
}

void SizeArrays(const FieldReader& in, int gridLine, Model& model) {
  const int cells = int{model.CellRowCount} * model.CellColumnCount;
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

/// Record groups 7 to 11. The running number at the head of a record is read and dropped.
void ReadGroups(FieldReader& in, Model& model) {
  Integer runningNumber = 0;
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j)
      in.Read("the cell state", model.CellState(i, j));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    in.ReadRecord("the node's record", runningNumber, model.NodeXY(k, 1), model.NodeXY(k, 2));
  }
  for (int e = 1; e <= model.ElementCount; ++e) {
    in.ReadRecord("the element's record", runningNumber, model.ElementNodes(e, 1),
                  model.ElementNodes(e, 2), model.ElementNodes(e, 3), model.ElementNodes(e, 4));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    in.ReadRecord("the support's record", runningNumber, model.NodeFreedom(k, 1),
                  model.NodeFreedom(k, 2));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    in.ReadRecord("the load's record", runningNumber, model.NodeLoad(k, 1), model.NodeLoad(k, 2));
  }
}

/// Refuses counts that no file gives back, as a failed opening can leave them. Without a domain all
/// are 0.
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
  std::string text;
  WriteRecord(text, model.DomainWidth, model.ElementSize, model.OriginFracX, model.OriginFracY);
  WriteRecord(text, model.CellRowCount, model.CellColumnCount);
  WriteRecord(text, model.DomainX1, model.DomainY1);
  WriteRecord(text, model.DomainX2, model.DomainY2);
  WriteRecord(text, model.YoungModulus, model.PoissonRatio, model.Thickness);
  WriteRecord(text, model.NodeCount, model.ElementCount);
  for (int i = 1; i <= model.CellRowCount; ++i) {
    for (int j = 1; j <= model.CellColumnCount; ++j) WriteRecord(text, model.CellState(i, j));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    WriteRecord(text, k, model.NodeXY(k, 1), model.NodeXY(k, 2));
  }
  for (int e = 1; e <= model.ElementCount; ++e) {
    WriteRecord(text, e, model.ElementNodes(e, 1), model.ElementNodes(e, 2),
                model.ElementNodes(e, 3), model.ElementNodes(e, 4));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    WriteRecord(text, k, model.NodeFreedom(k, 1), model.NodeFreedom(k, 2));
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    WriteRecord(text, k, model.NodeLoad(k, 1), model.NodeLoad(k, 2));
  }
  WriteRecord(text, model.StressTarget, model.Epsilon, model.Lambda);
  return text;
}

void SaveModelFile(Model& model, const std::filesystem::path& path) {
  model.ModelFilePath = path.string();
  try {
    ReplaceFile(path, ModelFileText(model));
  } catch (const FileWriteError& error) {
    throw ModelFileError(0, error.what());
  } catch (const RunTimeError& error) {
    throw ModelFileError(0, error.what());
  }
}

void ReadModel(Model& model, std::streambuf& input, const std::function<void()>& beforeChange) {
  FieldReader in(input);
  try {
    const int gridLine = ReadHead(in, model, beforeChange);
    SizeArrays(in, gridLine, model);
    ReadGroups(in, model);
    in.ReadRecord("the optimization parameter", model.StressTarget, model.Epsilon, model.Lambda);
  } catch (const std::ios_base::failure& failure) {
    in.Fail("the file cannot be read: " + failure.code().message());
  }
}

void OpenModelFile(Model& model, const std::filesystem::path& path,
                   const std::function<void()>& beforeChange) {
  model.ModelFilePath = path.string();
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
  ReadModel(model, file, beforeChange);
}

}  // namespace quillane
