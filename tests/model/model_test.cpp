// The model file, safe saving, numbers as text, the coupling matrix, and presses snapped to nodes
// and cells.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <thread>

#include "model/coupling_matrix.h"
#include "model/grid_pick.h"
#include "model/model_file.h"
#include "model/number_text.h"
#include "model/numbers.h"
#include "model/run_time_error.h"
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

/// Returns the text of a valid file with the first `from` replaced.
std::string With(const std::string& from, const std::string& to) {
  std::string text = ModelFileText(Sample());
  return text.replace(text.find(from), from.size(), to);
}

TEST(ModelFile, WritesEveryRecordInOrderAndReadsAnyUsualFormOfNumbersAndLines) {
  std::string text = ModelFileText(Sample());
  EXPECT_TRUE(
      text.starts_with("2000,12.5,0.25,0.5\r\n2,3\r\n0,0\r\n37.5,25\r\n"
                       "210000,0.333333333333333,1\r\n12,6\r\n1\r\n2\r\n1\r\n1\r\n1\r\n-3\r\n"
                       "1,0,0\r\n2,12.5,0\r\n"));
  EXPECT_TRUE(text.ends_with("12,0,-1234.5678901234\r\n12.34567,3,0.05\r\n"));
  EXPECT_NE(text.find("\r\n1,1,2,6,5\r\n"), std::string::npos);
  EXPECT_EQ(std::ranges::count(text, '\n'), 6 + 2 * 3 + 3 * 12 + 6 + 1);

  const test::ScratchFolder folder;
  Model sample = Sample();
  SaveModelFile(sample, folder / "a.model");
  text = With("\r\n1,1,2,6,5\r\n", "\r\n9,1,2.5,6.4,5\r\n");       // halves to even
  text.replace(0, text.find('\r'), " +2.0E3 , 125e-1,.25\n0.50");  // a line end serves as a comma
  std::erase(text, '\r');
  text.pop_back();  // without the last line end
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
      {"is missing", With("2000,", ","), 1},
      {"out of range", With("2000,", "1E+39,"), 1},
      {"out of range", With("\r\n2,3\r\n", "\r\n2,40000\r\n"), 2},
      {"has no cells", With("\r\n2,3\r\n", "\r\n-2,3\r\n"), 2},
      {"the grid has 65534 cells", With("\r\n2,3\r\n", "\r\n32767,2\r\n"), 2},
      {"passes 32767", With("\r\n2,3\r\n", "\r\n32767,1\r\n"), 6},
      {"cannot be sized", With("\r\n12,6\r\n", "\r\n-1,6\r\n"), 6},
      {"without end", good.substr(0, 30) + std::string(100000, '7'), 4},
      {"not a number", std::string(64, '\0'), 1},
      {"already in line 16 number 5 stands where 4 is due", With("4,37.5,0\r\n", ""), 55},
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
  for (const std::filesystem::path& path : {folder.Path(), folder / "no/x"}) {
    EXPECT_THROW(SaveModelFile(model, path), ModelFileError) << path;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

#if !defined(_WIN32)
TEST(ModelFile, SavingFollowsLinksAndLeavesPipes) {
  const test::ScratchFolder folder;
  Model model = Sample();
  SaveModelFile(model, folder / "kept.model");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(SaveModelFile(model, folder / "pipe"), ModelFileError);
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
  std::filesystem::create_symlink("kept.model", folder / "link.model");
  model.Epsilon = 7;
  SaveModelFile(model, folder / "link.model");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.model"));
  EXPECT_EQ(ReadFile(folder / "kept.model"), ModelFileText(model));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 3);
}
#endif

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

TEST(NumberText, FormatsRoundAndChangeFormWhereTheyShould) {
  EXPECT_EQ(GeneralText(2.1e7F), "2.1E+07");  // eight digits exceed a Single's seven
  EXPECT_EQ(GeneralText(16777216.0F), "1.677722E+07");
  EXPECT_EQ(GeneralText(2.1e7), "21000000");  // but not a Double's fifteen
  EXPECT_EQ(GeneralText(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(GeneralText(1e-5), "1E-05");
  EXPECT_EQ(GeneralText(-0.0), "0");            // no minus sign before a zero
  EXPECT_EQ(ExponentText(12450), "1.25E+04");   // an exact tie that half-to-even would lower
  EXPECT_EQ(ExponentText(9.995), "9.99E+00");   // the double lies just below the tie
  EXPECT_EQ(ExponentText(9.9951), "1.00E+01");  // the mantissa carries into the exponent
  EXPECT_EQ(WholeText(-2.5), "-3");
  EXPECT_EQ(WholeText(-0.4), "0");
}

TEST(NumberText, LeadingNumberOfTypedText) {
  const std::pair<const char*, double> kCases[] = {
      {"", 0},       {"abc", 0},    {"  12.5 mm", 12.5},
      {"-3", -3},    {"+4", 4},     {".5", 0.5},
      {"1e3", 1000}, {"1e+", 1},    {"1E-2y", 0.01},
      {"-.", 0},     {"--1", 0},    {"1,5", 1},
      {"inf", 0},    {"1e-400", 0}, {"0.0000000e999999999999", 0}};
  for (const auto& [text, value] : kCases) EXPECT_EQ(LeadingNumber(text), value) << text;
  EXPECT_EQ(LeadingNumber("1e400"), std::nullopt);
  EXPECT_EQ(LeadingNumber("1e99999999999999999999"), std::nullopt);
}

TEST(Numbers, ConversionsRoundHalvesToEvenAndRefuseOverflow) {
  EXPECT_EQ(ToInteger(2.5, "x"), 2);
  EXPECT_EQ(ToInteger(3.5, "x"), 4);
  EXPECT_EQ(ToInteger(-32768.5, "x"), -32768);
  EXPECT_THROW(ToInteger(32767.5, "x"), RunTimeError);
  EXPECT_THROW(ToInteger(std::numeric_limits<double>::quiet_NaN(), "x"), RunTimeError);
  EXPECT_EQ(ToSingle(0x1.fffffefp127, "x"), std::numeric_limits<float>::max());
  EXPECT_THROW(ToSingle(0x1.ffffffp127, "x"), RunTimeError);
}

TEST(NumberText, WritingReadingAndWritingIsStableAtAnyMagnitude) {
  const auto expectStable = [](auto value) {
    decltype(value) back = 0;
    ASSERT_EQ(ParseField(GeneralText(value), back), FieldFault::kNone);
    ASSERT_EQ(GeneralText(back), GeneralText(value));
  };
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    const auto bits = static_cast<std::uint32_t>(random());
    if (!std::isfinite(std::bit_cast<Single>(bits))) continue;
    expectStable(std::bit_cast<Single>(bits));
    expectStable(std::ldexp(static_cast<double>(random()), static_cast<int>(bits % 1800) - 950));
  }
}

TEST(CouplingMatrix, KeepsNothingOfTheLastMatrixAndHasBounds) {
  CouplingMatrix matrix;
  for (const double value : {3.0, 5.0}) {
    matrix.ReDim(30);
    for (const int column : {30, 4, 30}) matrix.Add(7, column, value);
    EXPECT_EQ(matrix(7, 30), 2 * value);
  }
  for (const auto& [row, column] : {std::pair{1, 31}, {-1, 1}, {31, 0}, {0, -1}}) {
    EXPECT_THROW(matrix.Add(row, column, 1), RunTimeError);
    EXPECT_THROW(matrix(row, column), RunTimeError);
  }
}

/// Seven columns and five rows, x from -4 to 3 cells, y from -3 to 2 cells.
Model Sample(Single elementSize) {
  Model model = test::Plate(5, 7, elementSize);
  model.DomainX1 = -4 * elementSize, model.DomainX2 = 3 * elementSize;
  model.DomainY1 = -3 * elementSize, model.DomainY2 = 2 * elementSize;
  return model;
}

TEST(GridPick, PressesSnapToLinesNodesAndCellsAsReadFromAFile) {
  EXPECT_EQ(NearestGridLine(150, 100), 200);
  EXPECT_EQ(NearestGridLine(-150, 100), -100);
  EXPECT_EQ(NearestGridLine(-150.1F, 100), -200);
  const Model model = Sample(100);
  EXPECT_EQ(NodeAt(model, -449, -349), 1);
  EXPECT_EQ(CellAt(model, -400, -300), (CellIndex{1, 1}));
  EXPECT_EQ(CellAt(model, 299, 199), (CellIndex{5, 7}));
  EXPECT_EQ(CellAt(model, -400.1F, 0), std::nullopt);
  EXPECT_EQ(NearestGridLine(1, 0), std::nullopt);

  // Products of an inexact cell size and seven written digits differ in the last place.
  Model read = Sample(33.3F);
  read.DomainX1 = std::nextafter(read.DomainX1, 0.0F);
  read.DomainX2 = std::nextafter(read.DomainX2, 0.0F);
  read.DomainY2 = std::nextafter(read.DomainY2, 1000.0F);
  EXPECT_EQ(NodeAt(read, -133, -99), 1);
  EXPECT_EQ(NodeAt(read, 100, -99), 8);
  EXPECT_EQ(CellAt(read, -133, 66), (CellIndex{5, 1}));
  EXPECT_EQ(CellAt(read, -133, 67), std::nullopt) << "no row above the last";
}

}  // namespace
}  // namespace quillane
