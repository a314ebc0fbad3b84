// Small plates that tests analyse, and their files.
#pragma once

#include <filesystem>
#include <random>
#include <string>

#include "model/model.h"

namespace quillane::test {

/// A grid of rows x columns cells, all of the given state, lower left corner at the origin.
Model Plate(int rows, int columns, Single elementSize = 100, Integer state = kCellDesign);

/// Number of the node in grid row and column, both from 1 at the lower left.
int Node(const Model& model, int row, int column);

/// Gives the cells of a rectangle a state and marks the active nodes anew.
void SetCells(Model& model, int row1, int column1, int row2, int column2, Integer state);

/// Plate held at its left edge with a downward force (N) at the middle of its right edge.
Model Cantilever(int rows, int columns, double force = 1000);

/// A plate of random holes, islands, supports in x, y or both, and loads; its lower left corner is
/// always held and its first row always filled, so that something is held.
Model RandomPlate(unsigned seed);

/// A model file's text with one to four random faults; never empty.
std::string Damaged(std::string text, std::mt19937& random);

/// A new folder that is removed with all its files when the object is destroyed.
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
