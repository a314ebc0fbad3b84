// Small plates that tests analyse.
#include "support/plates.h"

#include <fstream>
#include <iterator>
#include <random>

#include "fem/mesh.h"

namespace quillane::test {

Model Plate(int rows, int columns, Single elementSize, Integer state) {
  Model model;
  model.ElementSize = elementSize;
  model.DomainX2 = static_cast<Single>(columns) * elementSize;
  model.DomainY2 = static_cast<Single>(rows) * elementSize;
  BuildMesh(model, rows, columns);
  model.DomainDefined = kTrue;
  for (Integer& cell : model.CellState.Raw()) cell = state;
  MarkActiveNodes(model);
  return model;
}

int Node(const Model& model, int row, int column) {
  return (row - 1) * (model.CellColumnCount + 1) + column;
}

void HoldLeftEdge(Model& model) {
  for (int i = 1; i <= model.CellRowCount + 1; ++i) {
    for (int d = 1; d <= 2; ++d) model.NodeFreedom(Node(model, i, 1), d) = 1;
  }
}

Model Cantilever(int rows, int columns, double force) {
  Model model = Plate(rows, columns);
  HoldLeftEdge(model);
  model.NodeLoad(Node(model, rows / 2 + 1, columns + 1), 2) = -force;
  return model;
}

Model RandomPlate(unsigned seed) {
  std::mt19937 random(seed);
  const auto chance = [&random](unsigned percent) { return random() % 100 < percent; };
  const int rows = 2 + static_cast<int>(random() % 9);
  const int columns = 2 + static_cast<int>(random() % 9);
  Model model = Plate(rows, columns, 25);
  for (int i = 2; i <= rows; ++i) {
    for (int j = 1; j <= columns; ++j) {
      if (chance(30)) model.CellState(i, j) = chance(50) ? kCellEmpty : kCellCutOut;
    }
  }
  for (int k = 1; k <= model.NodeCount; ++k) {
    if (chance(12)) model.NodeFreedom(k, 1) = 1;
    if (chance(12)) model.NodeFreedom(k, 2) = 1;
    if (chance(20)) model.NodeLoad(k, 1) = static_cast<double>(random() % 2001) - 1000;
    if (chance(20)) model.NodeLoad(k, 2) = static_cast<double>(random() % 2001) - 1000;
  }
  for (int j = 1; j <= 2; ++j) {
    for (int d = 1; d <= 2; ++d) model.NodeFreedom(j, d) = 1;
  }
  model.NodeLoad(Node(model, 2, columns + 1), 2) = 500;
  MarkActiveNodes(model);
  return model;
}

ScratchFolder::ScratchFolder() {
  std::random_device random;
  path_ = std::filesystem::temp_directory_path() / ("quillane-" + std::to_string(random()));
  std::filesystem::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace quillane::test
