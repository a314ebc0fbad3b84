// Small plates that tests analyse, and their files.
#include "support/plates.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "fem/mesh.h"
#include "model/platform.h"

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

void SetCells(Model& model, int row1, int column1, int row2, int column2, Integer state) {
  for (int i = row1; i <= row2; ++i) {
    for (int j = column1; j <= column2; ++j) model.CellState(i, j) = state;
  }
  MarkActiveNodes(model);
}

Model Cantilever(int rows, int columns, double force) {
  Model model = Plate(rows, columns);
  for (int i = 1; i <= rows + 1; ++i) {
    for (int d = 1; d <= 2; ++d) model.NodeFreedom(Node(model, i, 1), d) = 1;
  }
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
    for (int d = 1; d <= 2; ++d) {
      if (chance(12) || k <= 2) model.NodeFreedom(k, d) = 1;
      if (chance(20)) model.NodeLoad(k, d) = static_cast<double>(random() % 2001) - 1000;
    }
  }
  model.NodeLoad(Node(model, 2, columns + 1), 2) = 500;
  MarkActiveNodes(model);
  return model;
}

std::string Damaged(std::string text, std::mt19937& random) {
  static const char* const kValues[] = {"0",     "-1",     "1",    "2",     "3",    "7",    "40",
                                        "32767", "-32768", "1e38", "1e308", "1e99", "0.5",  "54",
                                        "16382", "1e-300", "",     "x",     "70",   "1e-45"};
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  for (std::size_t times = 1 + below(4); times > 0; --times) {
    const std::size_t at = below(text.size()), kind = below(5);
    if (kind == 0) text[at] = static_cast<char>(below(256));
    if (kind == 1) text.resize(at);
    if (kind == 2) text.insert(at, text.substr(below(text.size()), below(60)));
    if (kind > 2) {  // a field, half of the time a count, a size or a property near the beginning
      const std::size_t begin = text.find_last_of(",\n", kind == 3 ? at % 120 : at) + 1;
      const std::size_t end = std::min(text.find_first_of(",\r\n", begin), text.size());
      text.replace(begin, end - begin, kValues[below(std::size(kValues))]);
    }
    if (text.empty()) text = "1";
  }
  return text;
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

std::filesystem::path ScratchFolder::operator/(const std::string& name) const {
  return path_ / PathFromText(name);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::string text;
  std::FILE* const file = OpenFile(path, "rb");  // waits while a writer holds the file
  if (file == nullptr) return text;
  char piece[65536];
  while (const std::size_t count = std::fread(piece, 1, sizeof piece, file)) {
    text.append(piece, count);
  }
  std::fclose(file);
  return text;
}

void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace quillane::test
