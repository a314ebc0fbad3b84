// Writes random plates as model files, and a list of them: file, kind and wished share of volume.
#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "model/model_file.h"
#include "model/safe_file.h"
#include "random_plates.h"

/// random_plates COUNT SEED FOLDER
int main(int count, char** arguments) {
  using namespace quillane;
  if (count != 4) return 2;
  const std::filesystem::path folder = arguments[3];
  std::filesystem::create_directories(folder);
  std::string list;
  for (int number = 1; number <= std::atoi(arguments[1]); ++number) {
    const auto seed = static_cast<std::uint32_t>(std::strtoul(arguments[2], nullptr, 10));
    RandomPlate plate = MakeRandomPlate(seed, number);
    const std::string file = fmt::format("{:03}-{}.model", number, plate.kind);
    SaveModelFile(plate.model, folder / file);
    list += fmt::format("{}\t{}\t{:.2f}\n", file, plate.kind, plate.wish);
  }
  ReplaceFile(folder / "plates.txt", list);
}
