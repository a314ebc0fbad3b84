// Small plates that tests analyse, and their files.
#pragma once

#include <filesystem>
#include <random>
#include <string>

#include "model/regular_grid.h"

namespace quillane::test {

/// Returns a grid of rows x columns cells, all of the given state, lower left corner at the origin.
Model Plate(int rows, int columns, Single elementSize = 100, Integer state = kCellDesign);

/// Returns the number of the node in a grid row and column, both from 1 at the lower left.
inline int Node(const Model& model, int row, int column) {
  return NodeOfCorner(model, row, column);
}

/// Sets the state of the cells of a rectangle and marks the active nodes again.
void SetCells(Model& model, int row1, int column1, int row2, int column2, Integer state);

/// Returns a plate held at its left edge, with a downward force (N) at the middle of its right
/// edge.
Model Cantilever(int rows, int columns, double force = 1000);

/// Returns a plate with random holes, islands, supports in x, y or both, and loads. Its first row
/// is always filled and its lower left corner always held, so that something is held.
Model RandomPlate(unsigned seed);

/// Returns the text of a model file with one to four random faults; never empty.
std::string Damaged(std::string text, std::mt19937& random);

/// A new folder, removed with all its files when the object is destroyed.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  std::filesystem::path operator/(const std::string& name) const;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& content);

}  // namespace quillane::test
