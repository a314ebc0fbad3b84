// The folders of the sources know only the folders below them, and the toolkit only where allowed.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

namespace quillane {
namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::set<std::string>> kMayInclude = {
    {"model", {"model"}},
    {"fem", {"fem", "model"}},
    {"optimize", {"optimize", "fem", "model"}},
    {"display", {"display", "model"}},
    {"batch", {"batch", "display", "optimize", "fem", "model"}},
    {"ui", {"ui", "display", "optimize", "fem", "model"}}};

bool MayUseToolkit(const std::string& folder, const std::string& stem) {
  return folder == "ui" || folder == "batch" ||
         (folder == "display" && (stem == "image_area" || stem == "picture"));
}

void CheckInclude(const std::string& folder, const fs::path& file, const std::string& header) {
  const std::string room = header.substr(0, header.find('/'));
  if (kMayInclude.contains(room)) {
    EXPECT_TRUE(kMayInclude.at(folder).contains(room)) << file << " includes " << header;
  }
  if (header.starts_with('Q')) {
    EXPECT_TRUE(MayUseToolkit(folder, file.stem().string())) << file << " includes " << header;
  }
}

TEST(IncludeRules, NoIncludeGoesUpwardAndTheToolkitStaysInItsPlaces) {
  const fs::path source = fs::path(QUILLANE_SOURCE_DIR) / "src";
  int includes = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source)) {
    const fs::path& file = entry.path();
    if (file.extension() != ".h" && file.extension() != ".cpp") continue;
    const std::string folder = fs::relative(file, source).begin()->string();
    ASSERT_TRUE(kMayInclude.contains(folder)) << folder << " has no rule";
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);) {
      if (!line.starts_with("#include ")) continue;
      ++includes;
      CheckInclude(folder, file, line.substr(10, line.find_last_of("\">") - 10));
    }
  }
  EXPECT_GT(includes, 100);
}

}  // namespace
}  // namespace quillane
