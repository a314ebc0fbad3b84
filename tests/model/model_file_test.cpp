// The model file: exact round trips, clear errors, and saving that never harms the old file.
#include "model/model_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "model/safe_file.h"
#include "support/plates.h"

namespace quillane {
namespace {

using test::ReadFile;
using test::WriteFile;

Model Sample() {
  Model model = test::Plate(2, 3, 12.5F);
  model.OriginFracX = 0.25F;
  model.PoissonRatio = 1.0 / 3.0;
  model.CellState(1, 2) = kCellNonDesign;
  model.CellState(2, 3) = kCellCutOut;
  model.NodeFreedom(1, 1) = 1;
  model.NodeLoad(12, 2) = -1234.5678901234;
  model.StressTarget = 12.34567F;
  model.Epsilon = 3;
  return model;
}

/// A good file's text with the first `from` replaced.
std::string With(const std::string& from, const std::string& to) {
  std::string text = ModelFileText(Sample());
  return text.replace(text.find(from), from.size(), to);
}

TEST(ModelFile, WritesEveryRecordInOrder) {
  const std::string text = ModelFileText(Sample());
  EXPECT_TRUE(
      text.starts_with("2000,12.5,0.25,0.5\r\n2,3\r\n0,0\r\n37.5,25\r\n"
                       "210000,0.333333333333333,1\r\n12,6\r\n1\r\n2\r\n1\r\n1\r\n1\r\n-3\r\n"
                       "1,0,0\r\n2,12.5,0\r\n"));
  EXPECT_TRUE(text.ends_with("12,0,-1234.5678901234\r\n12.34567,3,0.05\r\n"));
  EXPECT_NE(text.find("\r\n1,1,2,6,5\r\n"), std::string::npos);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6 + 2 * 3 + 3 * 12 + 6 + 1);
}

TEST(ModelFile, ReadsItsOwnFilesAndAnyUsualFormOfNumbersAndLines) {
  const test::ScratchFolder folder;
  Model sample = Sample();
  SaveModelFile(sample, folder / "a.model");
  std::string text = With("\r\n1,1,2,6,5\r\n", "\r\n9,1,2.5,6.4,5\r\n");  // halves to even
  text.replace(0, text.find('\r'), " +2.0E3 , 125e-1,.25\n0.50");  // a line end serves as a comma
  std::erase(text, '\r');
  text.pop_back();  // no last line end
  WriteFile(folder / "b.model", text);
  for (const char* name : {"a.model", "b.model"}) {
    Model model;
    OpenModelFile(model, folder / name);
    EXPECT_EQ(ModelFileText(model), ModelFileText(sample)) << name;
    EXPECT_EQ(model.ModelFilePath, (folder / name).string());
  }
}

TEST(ModelFile, MalformedFilesTellLineAndReasonAndKeepWhatWasRead) {
  const test::ScratchFolder folder;
  const std::string good = ModelFileText(Sample());
  const struct {
    const char* reason;
    std::string text;
    int line;
  } cases[] = {
      {"the file ends", "", 1},
      {"not a number", With("2000,", "wide,"), 1},
      {"not a number", With("2000,", "nan,"), 1},
      {"is missing", With("2000,", ","), 1},
      {"out of range", With("2000,", "1E+39,"), 1},
      {"out of range", With("\r\n2,3\r\n", "\r\n2,40000\r\n"), 2},
      {"has no cells", With("\r\n2,3\r\n", "\r\n-2,3\r\n"), 2},
      {"more than 32767", With("\r\n2,3\r\n", "\r\n30000,30000\r\n"), 2},
      {"passes 32767", With("\r\n2,3\r\n", "\r\n32767,1\r\n"), 6},
      {"cannot be sized", With("\r\n12,6\r\n", "\r\n-1,6\r\n"), 6},
      {"without end", good.substr(0, 30) + std::string(100000, '7'), 4},
      {"not a number", std::string(64, '\0'), 1},
      {"the file ends", good.substr(0, good.find("1,0,0\r\n2,12.5") - 2), 12},
  };
  Model model;
  for (const auto& c : cases) {
    model = Model{};
    WriteFile(folder / "bad.model", c.text);
    try {
      OpenModelFile(model, folder / "bad.model");
      ADD_FAILURE() << "opened: " << c.reason;
    } catch (const ModelFileError& error) {
      EXPECT_NE(std::string(error.what()).find(c.reason), std::string::npos) << error.what();
      EXPECT_EQ(error.Line(), c.line) << error.what();
    }
  }
  EXPECT_EQ(model.CellState(2, 3), kCellCutOut) << "the last file has all cells";
  EXPECT_EQ(model.NodeXY.First(), (IndexRange{0, 12}));
  EXPECT_EQ(model.Epsilon, 1);
  for (const std::filesystem::path& path :
       {folder / "none.model", folder.Path(), {"/dev/zero"}, {"/proc/self/mem"}}) {
    EXPECT_THROW(OpenModelFile(model, path), ModelFileError) << path;
  }
}

TEST(ModelFile, FailedSavingLeavesTheOldFileWhole) {
  const test::ScratchFolder folder;
  Model model = Sample();
  SaveModelFile(model, folder / "kept.model");
  Model broken = Sample();
  broken.NodeCount = 13;  // more nodes than the arrays hold: no text can be made
  EXPECT_THROW(SaveModelFile(broken, folder / "kept.model"), ModelFileError);
  EXPECT_EQ(ReadFile(folder / "kept.model"), ModelFileText(model));
  for (const std::filesystem::path& path : {folder.Path(), folder / "no/x", {"/dev/full"}}) {
    EXPECT_THROW(SaveModelFile(model, path), ModelFileError) << path;
  }
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));

  std::filesystem::create_symlink("kept.model", folder / "link.model");
  model.Epsilon = 7;
  SaveModelFile(model, folder / "link.model");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.model"));
  EXPECT_EQ(ReadFile(folder / "kept.model"), ModelFileText(model));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 2);
}

TEST(ReplaceFile, TakesEveryNameAndNeverMixesTwoWriters) {
  const test::ScratchFolder folder;
  const std::filesystem::path longest = folder / std::string(255, 'x');
  WriteFile(folder / "quillane1.part", "somebody's");
  const auto save = [&](char letter) {
    for (int time = 0; time < 100; ++time) {
      ReplaceFile(longest, std::string(100000, letter));
      const std::string text = ReadFile(longest);
      ASSERT_TRUE(text == std::string(100000, text.at(0))) << letter << time;
    }
  };
  std::thread other(save, 'b');
  save('a');
  other.join();
  EXPECT_EQ(ReadFile(folder / "quillane1.part"), "somebody's");
}

}  // namespace
}  // namespace quillane
