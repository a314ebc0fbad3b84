// Checks that a folder of the sources includes only folders below it, and the toolkit only where
// allowed.
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
    {"edit", {"edit", "fem", "model"}},
    {"display", {"display", "model"}},
    {"image", {"image", "display", "model"}},
    {"export", {"export", "model"}},
    {"batch", {"batch", "export", "image", "display", "edit", "optimize", "fem", "model"}},
    {"ui", {"ui", "export", "image", "display", "edit", "optimize", "fem", "model"}}};
const std::set<std::string> kMayUseToolkit = {"image", "export", "batch", "ui"};

TEST(IncludeRules, NoIncludeGoesUpwardAndTheToolkitStaysInItsPlaces) {
  const fs::path source = fs::path(QUILLANE_SOURCE_DIR) / "src";
  int includes = 0;
  for (const auto& entry : fs::recursive_directory_iterator(source)) {
    const fs::path& file = entry.path();
    if (file.extension() != ".h" && file.extension() != ".cpp") continue;
    const std::string folder = fs::relative(file, source).begin()->string();
    ASSERT_TRUE(kMayInclude.contains(folder)) << folder << " has no rule";
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);) {
      if (!line.starts_with("#include ")) continue;
      ++includes;
      const std::string room = line.substr(10, line.find('/') - 10);
      EXPECT_TRUE(!kMayInclude.contains(room) || kMayInclude.at(folder).contains(room))
          << file << ": " << line;
      EXPECT_TRUE(kMayUseToolkit.contains(folder) || line[10] != 'Q') << file << ": " << line;
    }
  }
  EXPECT_GT(includes, 100);
}

}  // namespace
}  // namespace quillane
