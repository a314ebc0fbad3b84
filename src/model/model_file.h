// The model file: plain text records that hold everything a user entered.
#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <streambuf>
#include <string>

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

/// Reads the records of a model file into the model. The arrays of grid, mesh, supports, loads and
/// results are re-created; nothing derived is recomputed, and what follows the last record is not
/// looked at. A failure throws ModelFileError and leaves what was read so far in the model.
/// beforeChange, where given, is called before the first value goes into the model.
void ReadModel(Model& model, std::streambuf& input, const std::function<void()>& beforeChange = {});

/// ReadModel from an ordinary file; keeps path in ModelFilePath. Throws as it does.
void OpenModelFile(Model& model, const std::filesystem::path& path,
                   const std::function<void()>& beforeChange = {});

}  // namespace quillane
