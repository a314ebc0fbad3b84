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

/// A model file that cannot be read or written; what() tells line (where there is one) and reason.
class ModelFileError : public std::runtime_error {
 public:
  /// line counts from 1; 0 where the reason is not in a line.
  ModelFileError(int line, const std::string& reason);
  int Line() const { return line_; }

 private:
  int line_;
};

/// The records of a model file: one line of comma-separated numbers each, ended by CR LF, in the
/// order view, grid size, domain corners, material, mesh size, cells, nodes, elements, supports,
/// loads, optimization parameters. Throws RunTimeError where the arrays do not match the counts
/// or the counts are none of a mesh.
std::string ModelFileText(const Model& model);

/// Writes the model to path and keeps path in ModelFilePath. A failure throws ModelFileError and
/// leaves an old file whole.
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

/// What the text of a model tells beyond the model.
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
/// last record are only noted. A byte order mark is skipped. A failure throws ModelFileError and
/// leaves what was read so far in the model. beforeChange, where given, is called before the first
/// value goes into the model.
ReadingNotes ReadModel(Model& model, std::streambuf& input,
                       const std::function<void()>& beforeChange = {});

/// ReadModel from an ordinary file; keeps path in ModelFilePath. Throws as it does.
void OpenModelFile(Model& model, const std::filesystem::path& path,
                   const std::function<void()>& beforeChange = {});

}  // namespace quillane
