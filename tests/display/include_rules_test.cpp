// The folders of the sources know only the folders below them, and the toolkit only where allowed.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
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

bool MayUseToolkit(const std::string& folder, const fs::path& file) {
  const std::string stem = file.stem().string();
  return folder == "ui" || folder == "batch" ||
         (folder == "display" && (stem == "image_area" || stem == "picture"));
}

void CheckInclude(const std::string& folder, const fs::path& file, const std::string& header) {
  const std::string room = header.substr(0, header.find('/'));
  if (room != header && kMayInclude.contains(room)) {
    EXPECT_TRUE(kMayInclude.at(folder).contains(room)) << file << " includes " << header;
  }
  const bool isToolkit = header.size() > 1 && header[0] == 'Q' && std::isupper(header[1]) != 0;
  if (isToolkit || header.starts_with("Qt")) {
    EXPECT_TRUE(MayUseToolkit(folder, file)) << file << " includes " << header;
  }
}

TEST(IncludeRules, NoIncludeGoesUpwardAndTheToolkitStaysInItsPlaces) {
  const std::regex include(R"(^\s*#\s*include\s*["<]([^">]+)[">])");
  const fs::path source = fs::path(QUILLANE_SOURCE_DIR) / "src";
  int files = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source)) {
    const fs::path& file = entry.path();
    if (file.extension() != ".h" && file.extension() != ".cpp") continue;
    ++files;
    const std::string folder = fs::relative(file, source).begin()->string();
    ASSERT_TRUE(kMayInclude.contains(folder)) << folder << " has no rule";
    std::ifstream text(file);
    std::smatch match;
    for (std::string line; std::getline(text, line);) {
      if (std::regex_search(line, match, include)) CheckInclude(folder, file, match[1]);
    }
  }
  EXPECT_GT(files, 30);
}

}  // namespace
}  // namespace quillane
