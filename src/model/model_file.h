// The model file: plain text records that hold everything a user entered.
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

#include "model/model.h"

namespace quillane {

/// A model file cannot be read or written; what() gives the line, if there is one, and the reason.
class ModelFileError : public std::runtime_error {
 public:
  /// line: from 1; 0 if the reason is not in a line.
  ModelFileError(int line, const std::string& reason);
  int Line() const { return line_; }

 private:
  int line_;
};

/// Returns the text of a model file: records of comma-separated numbers, a line each, ended by CR
/// LF, in the order view, grid size, domain corners, material, mesh size, cells, nodes, elements,
/// supports, loads, optimization parameters. Throws RunTimeError if the arrays do not match the
/// counts or the counts are not those of a mesh.
std::string ModelFileText(const Model& model);

/// Writes the model to path and keeps path in ModelFilePath. Throws ModelFileError and then leaves
/// an old file and ModelFilePath as they are.
void SaveModelFile(Model& model, const std::filesystem::path& path);

/// The records of a model file in their order; from kCell to kLoad one for each cell, node or
/// element.
enum class Record {
  kView,
  kGrid,
  kLowerLeft,
  kUpperRight,
  kMaterial,
  kMesh,
  kCell,
  kNode,
  kElement,
  kSupport,
  kLoad,
  kParameters,
};
inline constexpr std::size_t kRecordKinds = static_cast<std::size_t>(Record::kParameters) + 1;

/// What reading finds in a model's text beyond the model.
struct ReadingNotes {
  struct Place {
    int line;    ///< where the record begins, from 1
    int number;  ///< its running number; its place in its group, from 1, where it has none
  };
  struct RoundedField {
    int line;
    std::string text;
  };
  std::array<std::vector<Place>, kRecordKinds> places;  ///< [kind][place in its group - 1]
  std::vector<RoundedField> rounded;                    ///< read as the nearest integer
  int restLine = 0;                                     ///< where text follows the last record

  const std::vector<Place>& Places(Record record) const {
    return places[static_cast<std::size_t>(record)];
  }
};

/// Reads the records of a model file into the model. The arrays of grid, mesh, supports, loads and
/// results are re-created; nothing derived is recomputed, and running numbers and what follows the
/// last record are only noted. A byte order mark is skipped. Throws ModelFileError and then leaves
/// what was read so far in the model. Calls beforeChange, if given, before it changes the model.
ReadingNotes ReadModel(Model& model, std::streambuf& input,
                       const std::function<void()>& beforeChange = {});

/// ReadModel from an ordinary file; keeps path in ModelFilePath if there is one. Throws as it does.
void OpenModelFile(Model& model, const std::filesystem::path& path,
                   const std::function<void()>& beforeChange = {});

}  // namespace quillane
